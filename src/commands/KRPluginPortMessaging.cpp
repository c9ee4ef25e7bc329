#include "commands/KRPluginPortMessaging.h"

#include "platform/RemoteMessagePort.h"

bool KRPluginPortMessaging::sendMessage(const QString &message, const QString &on)
{
    constexpr quint32 textMessage = 0x1111;
    constexpr std::chrono::seconds sendTimeout(10);
    const auto port = RemoteMessagePort::create(on);
    if (!port || !port->isValid())
        return false;
    port->sendRequest(textMessage, message.toUtf8(), sendTimeout);
    return true;
}
