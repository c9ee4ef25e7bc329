#include "look/Translations.h"

#include "hosting/UsersLanguage.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

static void initializeResources()
{
    Q_INIT_RESOURCE(korvan_host_texts); // a static library's resources are not found otherwise
}

Translations::Translations()
    : m_framework(translatorOfUsersLanguage())
{
    if (!m_framework)
        return; // the program is written in the same languages
    initializeResources();
    load(m_qt, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    load(m_program, QStringLiteral("korvan-host"), QStringLiteral(":/korvan-host/translations"));
    QCoreApplication::installTranslator(m_framework.get());
}

Translations::~Translations() = default;

void Translations::load(QTranslator &translator, const QString &name, const QString &folder) const
{
    if (translator.load(QLocale(), name, QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(&translator);
}
