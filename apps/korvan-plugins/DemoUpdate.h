#pragma once

#include "Output.h"
#include "PluginSession.h"
#include "hosting/FileServer.h"

#include <QTemporaryDir>

/// The part of the demonstration in which a plug-in is updated: its author publishes a newer version on a server of
/// this computer, and the user checks, downloads and installs it.
class DemoUpdate
{
public:
    /// `plugins` is the folder of the demonstration's copies of the plug-ins. Lets the installed one know of its feed:
    /// before the plug-ins are loaded.
    explicit DemoUpdate(const QString &plugins);

    /// Whether everything went as it should; says what is done.
    bool perform(PluginSession &session, Output &output);

private:
    bool publish(const QString &plugins);

    FileServer m_server;
    QTemporaryDir m_folder;
    bool m_isPublished;
};
