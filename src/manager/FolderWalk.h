#pragma once

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <vector>

struct FolderEntry;

/// Hears of what a walk meets, before the walk looks into it.
class FolderWalkObserver
{
public:
    enum class Arrival { FromParent, FromElsewhere };

    /// A folder, or a link that was named to the walk, is about to be visited. `FromElsewhere` is one that was named,
    /// or that a link led to.
    virtual void willVisit(const QByteArray &folder, Arrival arrival) = 0;
    /// The entry of a visited folder is a link, which is about to be followed.
    virtual void foundLink(const QByteArray &folder, const QByteArray &entry) = 0;
    /// The entry of a visited folder is a plug-in, which is `target` after all links.
    virtual void foundBundle(const QByteArray &folder, const QByteArray &entry, const QByteArray &target) = 0;

protected:
    ~FolderWalkObserver() = default;
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

    /// The observer may be null; else it has to outlive the walking.
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
    using Arrival = FolderWalkObserver::Arrival;

    void visit(const QByteArray &folder, Arrival arrival);
    void visitEntry(const QByteArray &folder, const FolderEntry &entry);
    void remember(const QByteArray &folder, Arrival arrival);
    bool isIgnored(const QByteArray &folder) const;

    QSet<QByteArray> m_ignoredNames;
    QSet<QByteArray> m_visited;
    std::vector<Step> m_steps;
    FolderWalkObserver *m_observer;
};
