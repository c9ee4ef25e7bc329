#pragma once

#include "platform/Export.h"

#include <QLocale>
#include <QTranslator>

#include <memory>

/// A translator with the framework's texts in the first of the locale's languages (`QLocale::uiLanguages()`) that they
/// are written in: English, German, French, Japanese and simplified Chinese. A language counts in all regions where it
/// has the same script: Austria gets the German texts, Taiwan does not get simplified Chinese. The default is the
/// user's language, unless the host has chosen another with `QLocale::setDefault()`.
///
/// The texts are part of the library; no file is read. The caller owns the translator and decides what becomes of it:
///
///     const auto texts = KorvanPluginManagerTranslator();
///     if (texts)
///         QCoreApplication::installTranslator(texts.get());
///
/// It has to be installed on the application's thread, and serves all threads until it is destroyed; so it has to
/// outlive the managers. What was looked up before stays as it is: a menu is to be filled again after a change.
///
/// Nil when the texts are written in none of the languages. Everything is English then, as it is without a translator.
/// Any thread; the translator belongs to the one that calls.
KORVAN_EXPORT std::unique_ptr<QTranslator> KorvanPluginManagerTranslator(const QLocale &locale = QLocale());
