#pragma once

#include "manager/KRPluginManager.h"
#include "platform/FileURL.h"
#include "support/FolderEventsReading.h"
#include "support/NilableText.h"
#include "support/PathFiles.h"

/// A store under which every plug-in is enabled. It does something while a reload asks it.
class ActingStateStore final : public KRPluginManagingState
{
public:
    bool shouldEnablePluginIdentifier(const QString &, const std::optional<QString> &) override
    {
        whenAsked();
        return true;
    }
    bool isPluginWithIdentifier(const QString &, const std::optional<QString> &) const override { return false; }
    void updateMetadataWithPluginIndentifiers(const QStringList &) override { whenToldOfIdentifiers(); }

    std::function<void()> whenAsked = [] {};
    std::function<void()> whenToldOfIdentifiers = [] {};
};

/// A manager of the folders "Plugins" and "More", loaded. It has found "a", "sub/b" and, through a link to "elsewhere",
/// "c", and watches these folders and "node_modules", in which there is another one.
struct MonitoredPlugins
{
    MonitoredPlugins();

    /// Writes the manifest of a plug-in, which is known by the last component of its path.
    void write(const QByteArray &path, const QByteArray &name = "Name") const;
    QByteArray path(const QByteArray &relativePath) const { return folder.path(relativePath); }
    QUrl url(const QByteArray &path) const { return fileURLFromPath(folder.path(path), FileKind::Folder); }
    /// As the registry has it; nil when it has no such plug-in.
    Text nameOf(const QString &identifier) const;
    QStringList found() const { return manager->plugins().keys(); }
    void settle() { letFoldersSettle(environment); }

    TestEnvironment environment;
    TemporaryFolder folder;
    std::shared_ptr<ActingStateStore> store = std::make_shared<ActingStateStore>();
    std::unique_ptr<KRPluginManager> manager;
    /// Of any manager, after the first one of this one.
    int reloads = 0;
    NotificationObserver observer;
};
