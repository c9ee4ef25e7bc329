#pragma once

#include "localization/KorvanPluginManagerLocalization.h"

#include <cstddef>

/// The framework's own texts. lupdate collects the calls into the string tables, so the name is the one that it looks
/// for.
namespace Localizable {

/// The text for the user from the table "Localizable". Takes nothing but a literal: a text that is put together while
/// the program runs would be in no table. Any thread.
template <std::size_t length>
QString tr(const char (&english)[length])
{
    return KorvanPluginManagerLocalizedString(QString::fromUtf8(english));
}

} // namespace Localizable
