#pragma once

#include "platform/Export.h"

#include <QUrl>
#include <QVariant>

#include <span>

class KRPluginCommand;

/// One of the keys that a command adds to the context of its handlers.
struct CommandContextKey
{
    const char *name;
    /// Of the value, in the words of TypeScript.
    const char *type;
    /// Invalid when the context does not get the key. The URL is that of the run's script.
    QVariant (*value)(KRPluginCommand &command, const QUrl &url);
};

/// All of them.
KORVAN_EXPORT std::span<const CommandContextKey> commandContextKeys();
