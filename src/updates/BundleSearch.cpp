#include "updates/BundleSearch.h"

#include "bundles/PluginBundleExtension.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"

BundleSearch::BundleSearch(const QByteArray &folder)
    : m_root{folder, resolvedPath(folder)}
{ }

QByteArray BundleSearch::firstBundle()
{
    return m_root.resolved.isEmpty() ? QByteArray() : firstBundleIn(m_root);
}

QByteArray BundleSearch::firstBundleIn(const Place &place)
{
    if (m_visited.contains(place.resolved))
        return {};
    m_visited.insert(place.resolved);
    const auto entries = visibleEntries(place.resolved);
    for (const auto &entry : entries) {
        if (hasExtension(entry.name, pluginBundleExtension))
            return pathByAppending(place.path, entry.name);
    }
    for (const auto &entry : entries) {
        const auto bundle = firstBundleBelow(place, entry);
        if (!bundle.isEmpty())
            return bundle;
    }
    return {};
}

QByteArray BundleSearch::firstBundleBelow(const Place &place, const FolderEntry &entry)
{
    const auto target = targetOf(place.resolved, entry);
    if (target.kind != FolderEntry::Kind::Folder || !isInside(target.path))
        return {};
    return firstBundleIn({pathByAppending(place.path, entry.name), target.path});
}

bool BundleSearch::isInside(const QByteArray &resolved) const
{
    return resolved == m_root.resolved || resolved.startsWith(m_root.resolved == "/" ? "/" : m_root.resolved + '/');
}
