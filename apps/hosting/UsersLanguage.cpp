#include "hosting/UsersLanguage.h"

#include "localization/KorvanPluginManagerTranslator.h"

namespace {

/// Of the variables that choose the language of messages, the first one that is set, as setlocale() has it.
QByteArray localeOfMessages()
{
    for (const auto *const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const auto locale = qgetenv(variable); !locale.isEmpty())
            return locale;
    }
    return "C";
}

} // namespace

std::unique_ptr<QTranslator> translatorOfUsersLanguage()
{
    // Scripts that want the same texts on every machine ask for this locale. Programs heed LANGUAGE in others only; Qt
    // does so in all.
    const auto locale = localeOfMessages();
    if (locale == "C" || locale == "POSIX" || locale.startsWith("C."))
        return nullptr;
    return KorvanPluginManagerTranslator();
}
