#pragma once

#include "manager/KRPluginManager.h"

#include <QString>

#include <optional>

/// What "ID" or "ID@VERSION" names.
struct UpdateSelection
{
    QString identifier;
    /// Nil: the latest.
    std::optional<QString> version;
};

/// A text that is an installed plug-in's identifier as a whole names that plug-in; otherwise the version follows the
/// last "@".
UpdateSelection readSelection(const QString &text, const PluginTable &plugins);
