#include "UpdateSelection.h"

UpdateSelection readSelection(const QString &text, const PluginTable &plugins)
{
    const auto at = text.lastIndexOf(u'@');
    if (at < 0 || plugins.contains(text))
        return {text, std::nullopt};
    return {text.left(at), text.mid(at + 1)};
}
