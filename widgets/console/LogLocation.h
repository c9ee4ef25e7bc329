#pragma once

#include "widgets/Export.h"

#include <QString>
#include <QUrl>

#include <optional>

/// A place in a script.
struct LogLocation
{
    QUrl file;
    /// From 1.
    int line = 0;

    friend bool operator==(const LogLocation &, const LogLocation &) = default;
};

/// The first place that an error's text points to, in a line "    at …" as the framework writes them, when it is a file
/// in the plug-in's folder; nil otherwise. A text that is made to point elsewhere, "..", links and all, points nowhere.
/// Looks at the disk. Any thread.
KORVAN_WIDGETS_EXPORT std::optional<LogLocation> locationIn(const QString &text, const QUrl &pluginFolder);
