#include "manager/PluginDiscovery.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"

namespace {

void systemLog(const QString &line)
{
    LTAppEnvironment::current().systemLog(line);
}

QByteArray resolved(const QByteArray &path)
{
    const auto target = resolvedPath(path);
    return target.isEmpty() ? path : target;
}

bool isBundleName(const QByteArray &path)
{
    return hasExtension(path, "korvanplugin");
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

PluginDiscovery::PluginDiscovery(const QStringList &ignoredNames, ShouldEnable shouldEnable)
    : m_shouldEnable(std::move(shouldEnable))
{
    for (const auto &name : ignoredNames)
        m_ignoredNames.insert(name.toUtf8());
}

PluginTable PluginDiscovery::plugins(const QByteArray &folder)
{
    if (m_visited.contains(folder))
        return {};
    const auto target = resolved(folder);
    if (target != folder)
        m_visited.insert(folder);
    return pluginsInResolvedFolder(target);
}

PluginTable PluginDiscovery::pluginsInResolvedFolder(const QByteArray &folder)
{
    PluginTable found;
    if (m_visited.contains(folder))
        return found;
    m_visited.insert(folder);
    if (isIgnored(folder)) {
        systemLog(QStringLiteral("Ignoring the contents of folder %1.")
                      .arg(absoluteString(fileURLFromPath(folder, FileKind::Folder))));
        return found;
    }
    const auto entries = visibleEntries(folder);
    for (const auto &entry : entries) {
        const auto [path, kind] = targetOf(folder, entry);
        if (kind != FolderEntry::Kind::Folder)
            continue; // also a plain file with the extension: there is no bundle in it
        if (isBundleName(path))
            addBundle(path, found);
        else
            found.insert(pluginsInResolvedFolder(path));
    }
    return found;
}

bool PluginDiscovery::isIgnored(const QByteArray &folder) const
{
    return m_ignoredNames.contains(withoutExtension(lastPathComponent(folder)));
}

void PluginDiscovery::addBundle(const QByteArray &path, PluginTable &found)
{
    const auto bundle = KRPluginBundle::initWithPath(path, m_loading);
    if (!bundle || !bundle->identifier())
        return;
    const auto identifier = *bundle->identifier();
    bundle->setEnabled(m_shouldEnable(identifier, bundle->version()));
    auto &place = found[identifier];
    if (!place) {
        place = bundle;
        return;
    }
    systemLog(QStringLiteral("Plugin at URL %1 and plugin at URL %2 have the same bundle identifier (%3). The second "
                             "plugin will be ignored.")
                  .arg(absoluteString(place->url()), absoluteString(bundle->url()), identifier));
}
