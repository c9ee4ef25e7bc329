#pragma once

#include <QTranslator>

#include <memory>

/// The texts of the program, of the framework and of Qt in the user's language, for as long as it lives; what is not
/// written in that language is English. Needs the application.
class Translations
{
public:
    Translations();
    ~Translations();
    Translations(const Translations &) = delete;
    Translations &operator=(const Translations &) = delete;

private:
    void load(QTranslator &translator, const QString &name, const QString &folder) const;

    std::unique_ptr<QTranslator> m_framework;
    QTranslator m_program;
    QTranslator m_qt;
};
