#include "localization/StringTables.h"

#include <QFile>
#include <QLocale>
#include <QSet>

using namespace Qt::StringLiterals;

/// Has to be outside of every namespace. A linker drops resources of a static library that nobody asks for.
static void useStringTables()
{
    Q_INIT_RESOURCE(korvan_string_tables);
}

namespace {

QString resourceOf(const QString &table)
{
    return u":/korvan/localization/KorvanPluginManager_%1.qm"_s.arg(table);
}

/// The table for the language as it is written there, else the one for the language where it has only one script.
QString stringTableForLocale(const QLocale &locale)
{
    const auto language = QLocale::languageToCode(locale.language());
    const auto written = resourceOf(language + u'_' + QLocale::scriptToCode(locale.script()));
    if (QFile::exists(written))
        return written;
    return QFile::exists(resourceOf(language)) ? resourceOf(language) : QString();
}

} // namespace

QString stringTableForLanguages(const QStringList &languages)
{
    useStringTables();
    QSet<QLocale::Language> regional;
    for (const auto &name : languages) {
        const QLocale locale(name);
        // Behind "zh-TW", "zh" is what Qt makes of it by leaving out the region, not a wish for simplified Chinese.
        const bool isShortened = !name.contains(u'-') && regional.contains(locale.language());
        regional.insert(locale.language());
        if (isShortened)
            continue;
        if (const auto table = stringTableForLocale(locale); !table.isEmpty())
            return table;
    }
    return {};
}
