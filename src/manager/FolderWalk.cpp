#include "manager/FolderWalk.h"

#include "bundles/PluginBundleExtension.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"

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
    auto target = resolvedPath(folder);
    if (target.isEmpty())
        target = folder;
    if (target != folder)
        remember(folder, Arrival::FromElsewhere);
    visit(target, Arrival::FromElsewhere);
}

void FolderWalk::walkResolved(const QByteArray &folder)
{
    visit(folder, Arrival::FromElsewhere);
}

void FolderWalk::visit(const QByteArray &folder, Arrival arrival)
{
    if (m_visited.contains(folder))
        return;
    remember(folder, arrival);
    if (isIgnored(folder)) {
        m_steps.push_back({Step::Kind::Ignored, folder});
        return;
    }
    m_steps.push_back({Step::Kind::Enter, folder});
    const auto entries = visibleEntries(folder);
    for (const auto &entry : entries)
        visitEntry(folder, entry);
    m_steps.push_back({Step::Kind::Leave, folder});
}

void FolderWalk::visitEntry(const QByteArray &folder, const FolderEntry &entry)
{
    const bool isLink = entry.kind == FolderEntry::Kind::Link;
    if (!isLink && entry.kind != FolderEntry::Kind::Folder)
        return; // a plain file with the extension holds no bundle
    if (isLink && m_observer)
        m_observer->foundLink(folder, pathByAppending(folder, entry.name));
    const auto target = targetOf(folder, entry);
    if (target.kind != FolderEntry::Kind::Folder)
        return;
    if (!hasExtension(target.path, pluginBundleExtension))
        return visit(target.path, isLink ? Arrival::FromElsewhere : Arrival::FromParent);
    if (m_observer)
        m_observer->foundBundle(folder, isLink ? pathByAppending(folder, entry.name) : target.path, target.path);
    m_steps.push_back({Step::Kind::Bundle, target.path});
}

void FolderWalk::remember(const QByteArray &folder, Arrival arrival)
{
    m_visited.insert(folder);
    if (m_observer)
        m_observer->willVisit(folder, arrival);
}

bool FolderWalk::isIgnored(const QByteArray &folder) const
{
    return m_ignoredNames.contains(withoutExtension(lastPathComponent(folder)));
}
