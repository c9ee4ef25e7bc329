#pragma once

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <vector>

/// Hears of what a walk is about to read, before it does.
class FolderWalkObserver
{
public:
    virtual ~FolderWalkObserver();
    /// The folder is listed next, or passed over because of its name.
    virtual void willVisit(const QByteArray &folder) = 0;
    virtual void didFindBundle(const QByteArray &bundle, const QByteArray &inFolder) = 0;
};

/// Walks folders for plug-ins, without opening any. What it meets comes out as a list of steps, in the order of the
/// walk; a folder that it reaches twice, through links or because it was named twice, is walked once.
///
/// What cannot be read simply yields nothing.
class FolderWalk
{
public:
    struct Step
    {
        enum class Kind {
            /// What follows, up to the matching Leave, was found in this folder.
            Enter,
            Leave,
            /// A folder that is passed over because of its name.
            Ignored,
            /// A folder that is a plug-in.
            Bundle
        };

        Kind kind;
        QByteArray path;
    };

    /// The observer may be null; it outlives the walk.
    explicit FolderWalk(const QStringList &ignoredNames, FolderWalkObserver *observer = nullptr);

    /// Walks a folder and everything below it.
    void walk(const QByteArray &folder);
    /// The same for a folder whose links were resolved already.
    void walkResolved(const QByteArray &folder);

    const std::vector<Step> &steps() const { return m_steps; }

    /// Every folder that was walked or passed over because of its name, and the links that led to the outermost ones.
    const QSet<QByteArray> &visitedFolders() const { return m_visited; }
    void setVisitedFolders(const QSet<QByteArray> &folders) { m_visited = folders; }

private:
    void foundBundle(const QByteArray &bundle, const QByteArray &inFolder);
    bool isIgnored(const QByteArray &folder) const;

    QSet<QByteArray> m_ignoredNames;
    FolderWalkObserver *m_observer;
    QSet<QByteArray> m_visited;
    std::vector<Step> m_steps;
};
