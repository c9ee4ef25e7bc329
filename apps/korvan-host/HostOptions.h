#pragma once

#include "hosting/HostingOptions.h"

#include <QStringList>

#include <optional>

class QCoreApplication;

/// What the command line asks for.
struct HostOptions : HostingOptions
{
    /// Documents to open.
    QStringList files;
    /// The colours for this time; nil: as the user's settings say.
    std::optional<QString> appearance;
    /// Writes pictures of the windows there and ends.
    std::optional<QString> screenshotFolder;
    /// Ends as soon as the first window is drawn, for whoever measures that.
    bool endsWhenShown = false;
};

/// Ends the program after --help and --version, and with a message for arguments that make no sense.
HostOptions parseHostOptions(const QCoreApplication &application);
