#pragma once

#include <QByteArray>
#include <QSet>

struct FolderEntry;

/// One search of a folder for the plug-in that it holds. Follows links as long as they stay inside the folder, and
/// looks into each folder once.
class BundleSearch
{
public:
    explicit BundleSearch(const QByteArray &folder);

    /// The path of the first bundle, below the folder as it was given; empty when there is none.
    QByteArray firstBundle();

private:
    /// A folder as it was reached, and as it is after all links.
    struct Place
    {
        QByteArray path;
        QByteArray resolved;
    };

    QByteArray firstBundleIn(const Place &place);
    QByteArray firstBundleBelow(const Place &place, const FolderEntry &entry);
    bool isInside(const QByteArray &resolved) const;

    Place m_root;
    QSet<QByteArray> m_visited;
};
