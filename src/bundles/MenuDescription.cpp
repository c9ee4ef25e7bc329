#include "bundles/MenuDescription.h"

#include "localization/Localizable.h"

QVariantMap defaultMenuDescription(const std::optional<QString> &pluginName, const CommandTable &commands)
{
    QVariantList items;
    for (const auto &entry : commands) {
        const auto &command = entry.second;
        if (command->canAppearInMenuBar() && command->identifier())
            items.append(*command->identifier());
    }
    return {
        {QStringLiteral("title"), pluginName ? *pluginName : untitledScriptTitle()},
        {QStringLiteral("items"), items},
    };
}

QString untitledScriptTitle()
{
    return Localizable::tr("untitled script");
}
