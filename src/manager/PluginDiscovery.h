#pragma once

#include "bundles/PluginLoading.h"
#include "manager/PluginTable.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>

/// Walks folders and makes a bundle for every plug-in in them, at any depth. One object serves one reload: a folder
/// that it reaches twice, through links or because it was named twice, is walked once.
///
/// What cannot be read simply yields nothing. Main thread only.
class PluginDiscovery
{
public:
    using ShouldEnable = std::function<bool(const QString &identifier, const std::optional<QString> &version)>;

    PluginDiscovery(const QStringList &ignoredNames, ShouldEnable shouldEnable);

    /// The plug-ins below a folder. Of two with the same identifier, side by side, the first one stays and the system
    /// log says so; one from a subfolder silently replaces what was found before it.
    PluginTable plugins(const QByteArray &folder);
    /// The same for a folder whose links were resolved already.
    PluginTable pluginsInResolvedFolder(const QByteArray &folder);

    /// Every folder that was walked or passed over because of its name, and the links that led to the outermost ones.
    const QSet<QByteArray> &visitedFolders() const { return m_visited; }
    void setVisitedFolders(const QSet<QByteArray> &folders) { m_visited = folders; }

private:
    bool isIgnored(const QByteArray &folder) const;
    void addBundle(const QByteArray &path, PluginTable &found);

    QSet<QByteArray> m_ignoredNames;
    ShouldEnable m_shouldEnable;
    QSet<QByteArray> m_visited;
    PluginLoading m_loading;
};
