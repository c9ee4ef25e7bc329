#include "manager/FolderWalk.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

namespace {

QByteArray resolved(const QByteArray &path)
{
    const auto target = resolvedPath(path);
    return target.isEmpty() ? path : target;
}

/// An entry after its links: where it leads, and to what.
struct Target
{
    QByteArray path;
    FolderEntry::Kind kind;
};

Target targetOf(const QByteArray &folder, const FolderEntry &entry)
{
    const auto path = pathByAppending(folder, entry.name);
    if (entry.kind != FolderEntry::Kind::Link)
        return {path, entry.kind};
    const auto target = resolved(path);
    return {target, kindOfTarget(target)};
}

} // namespace

FolderWalkObserver::~FolderWalkObserver() = default;

FolderWalk::FolderWalk(const QStringList &ignoredNames, FolderWalkObserver *observer)
    : m_observer(observer)
{
    for (const auto &name : ignoredNames)
        m_ignoredNames.insert(name.toUtf8());
}

void FolderWalk::walk(const QByteArray &folder)
{
    if (m_visited.contains(folder))
        return;
    const auto target = resolved(folder);
    if (target != folder)
        m_visited.insert(folder);
    walkResolved(target);
}

void FolderWalk::walkResolved(const QByteArray &folder)
{
    if (m_visited.contains(folder))
        return;
    m_visited.insert(folder);
    if (m_observer)
        m_observer->willVisit(folder);
    if (isIgnored(folder)) {
        m_steps.push_back({Step::Kind::Ignored, folder});
        return;
    }
    m_steps.push_back({Step::Kind::Enter, folder});
    const auto entries = visibleEntries(folder);
    for (const auto &entry : entries) {
        const auto [path, kind] = targetOf(folder, entry);
        if (kind != FolderEntry::Kind::Folder)
            continue; // a plain file with the extension holds no bundle
        if (hasExtension(path, "korvanplugin"))
            foundBundle(path, folder);
        else
            walkResolved(path);
    }
    m_steps.push_back({Step::Kind::Leave, folder});
}

void FolderWalk::foundBundle(const QByteArray &bundle, const QByteArray &inFolder)
{
    m_steps.push_back({Step::Kind::Bundle, bundle});
    if (m_observer)
        m_observer->didFindBundle(bundle, inFolder);
}

bool FolderWalk::isIgnored(const QByteArray &folder) const
{
    return m_ignoredNames.contains(withoutExtension(lastPathComponent(folder)));
}
