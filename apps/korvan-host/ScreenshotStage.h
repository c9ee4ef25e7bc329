#pragma once

#include "hosting/FileServer.h"

#include <QTemporaryDir>

class HostApplication;
class KRPluginManager;

/// Example plug-ins in all states that the windows show: up to date, with an update, with one that fails, with one that
/// is half way, incompatible, running, failing. Gone with this object.
class ScreenshotStage
{
public:
    /// Copies the plug-ins of the folder.
    explicit ScreenshotStage(const QString &plugins);

    bool isComplete() const { return m_isComplete; }
    /// For the program's options.
    QString pluginFolder() const { return m_folder.filePath(QStringLiteral("plugins")); }
    /// When the program's plug-ins are loaded: brings them into their states.
    void play(HostApplication &host) const;

private:
    bool copyPlugins(const QString &from) const;
    bool addFeed(const QString &plugin, const QString &archive);
    void runCommands(HostApplication &host) const;
    static void checkForUpdates(HostApplication &host);

    QTemporaryDir m_folder;
    FileServer m_server;
    bool m_isComplete;
};

/// Lets the event loop run for a moment, so that windows are drawn.
void letWindowsSettle();
