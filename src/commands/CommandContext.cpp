#include "commands/CommandContext.h"

#include "commands/KRPluginCommand.h"
#include "platform/FileURL.h"

namespace {

QVariant pathOfScript(KRPluginCommand &, const QUrl &url)
{
    return displayPath(url);
}

QVariant urlOfScript(KRPluginCommand &, const QUrl &url)
{
    return url;
}

QVariant commandOfContext(KRPluginCommand &command, const QUrl &)
{
    return QVariant::fromValue(command.weak_from_this());
}

QVariant pluginOfContext(KRPluginCommand &command, const QUrl &)
{
    const auto bundle = command.pluginBundle();
    return bundle ? QVariant::fromValue(bundle->weak_from_this()) : QVariant();
}

} // namespace

std::span<const CommandContextKey> commandContextKeys()
{
    static constexpr CommandContextKey keys[] = {
        {"scriptPath", "string", &pathOfScript},
        {"scriptURL", "string", &urlOfScript},
        {"command", "Command", &commandOfContext},
        {"plugin", "Plugin", &pluginOfContext},
    };
    return keys;
}
