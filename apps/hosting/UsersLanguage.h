#pragma once

#include <QTranslator>

#include <memory>

/// The framework's texts in the language of the user's environment. Nil when they are English there, be it that they
/// are not written in that language.
std::unique_ptr<QTranslator> translatorOfUsersLanguage();
