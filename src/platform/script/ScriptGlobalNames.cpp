#include "platform/script/ScriptGlobalNames.h"

#include "platform/script/ScriptCharacters.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<QStringView, scriptGlobalCount> names{u"AbortController", u"AbortSignal", u"Buffer",
    u"DOMException", u"Event", u"EventTarget", u"Headers", u"Request", u"Response", u"TextDecoder", u"TextEncoder",
    u"URL", u"URLSearchParams", u"atob", u"btoa", u"fetch", u"performance", u"process", u"structuredClone"};

/// By character: may one of the names begin with it.
constexpr auto firstLetters = [] {
    std::array<bool, 128> result{};
    for (const auto name : names)
        result[std::size_t(name.front().unicode())] = true;
    return result;
}();

bool isPart(char16_t c)
{
    return ScriptCharacters::has(QChar(c), ScriptCharacters::NamePart);
}

ScriptGlobals search(QStringView text)
{
    ScriptGlobals found;
    const auto *const end = text.utf16() + text.size();
    for (const auto *next = text.utf16(); next != end;) {
        const auto *const word = next;
        while (next != end && isPart(*next))
            ++next;
        if (next == word) {
            ++next;
            continue;
        }
        if (*word >= 128 || !firstLetters[*word])
            continue;
        const QStringView name(word, next);
        const auto known = std::lower_bound(names.begin(), names.end(), name);
        if (known != names.end() && *known == name)
            found.set(std::size_t(known - names.begin()));
    }
    return found;
}

/// What was found in a text, with the text itself: comparing it is a fraction of searching it.
struct Searched
{
    QString text;
    ScriptGlobals found;
};

constexpr std::size_t rememberedTexts = 64; // a power of two, of about the size of what one user's plug-ins run in turn

Searched &remembered(QStringView text)
{
    static std::array<Searched, rememberedTexts> places;
    // The end of a script differs from another's more often than its beginning.
    const auto place = qHash(text.last(std::min<qsizetype>(text.size(), 128)), std::size_t(text.size()));
    return places[place % rememberedTexts];
}

} // namespace

std::span<const QStringView, scriptGlobalCount> scriptGlobalNames()
{
    return names;
}

ScriptGlobals scriptGlobalsIn(const QString &text)
{
    auto &searched = remembered(text);
    // The text of a file that has not changed is mostly the very same one.
    const bool isShared = searched.text.constData() == text.constData() && searched.text.size() == text.size();
    if (!isShared && searched.text != text)
        searched = {text, search(text)};
    return searched.found;
}
