#pragma once

#include "platform/Export.h"

#include <QString>

/// One-way texts to another program's message port.
class KORVAN_EXPORT KRPluginPortMessaging
{
public:
    /// `sendMessage:on:`. Sends the text to the port of that name. True exactly when such a port was found, whether or
    /// not the text went through. Blocks for at most ten seconds. Any thread.
    static bool sendMessage(const QString &message, const QString &on);
};
