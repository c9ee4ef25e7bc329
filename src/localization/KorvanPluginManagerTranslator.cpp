#include "localization/KorvanPluginManagerTranslator.h"

#include "localization/StringTables.h"

std::unique_ptr<QTranslator> KorvanPluginManagerTranslator(const QLocale &locale)
{
    const auto table = stringTableForLanguages(locale.uiLanguages());
    auto translator = std::make_unique<QTranslator>();
    if (table.isEmpty() || !translator->load(table))
        return nullptr;
    return translator;
}
