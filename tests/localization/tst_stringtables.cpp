#include "localization/StringTables.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_StringTables : public QObject
{
    Q_OBJECT

private slots:
    void firstLanguageWithATable_data();
    void firstLanguageWithATable();
};

void tst_StringTables::firstLanguageWithATable_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::addColumn<QString>("table");

    const auto row = [](const char *tag, const QStringList &languages, const QString &table) {
        QTest::newRow(tag) << languages << table;
    };
    row("no language", {}, {});
    row("no such language", {u"xx"_s, u"C"_s, u""_s, u"../de"_s}, {});
    row("a language", {u"de"_s}, u"de"_s);
    row("a region", {u"de-AT"_s}, u"de"_s);
    row("a region with an underscore", {u"fr_CA"_s}, u"fr"_s);
    row("a script", {u"ja-Jpan-JP"_s}, u"ja"_s);
    row("the first of several", {u"fr"_s, u"de"_s}, u"fr"_s);
    row("the first that has a table", {u"pt-BR"_s, u"pt"_s, u"de"_s}, u"de"_s);
    row("English before others", {u"en-GB"_s, u"de"_s}, u"en"_s);
    row("Chinese in China", {u"zh-CN"_s}, u"zh_Hans"_s);
    row("Chinese without a region", {u"zh"_s}, u"zh_Hans"_s);
    row("simplified Chinese in Taiwan", {u"zh-Hans-TW"_s}, u"zh_Hans"_s);
    row("traditional Chinese", {u"zh-Hant-TW"_s, u"zh-TW"_s}, {});
    row("traditional Chinese, whose region was left out at the end", {u"zh-TW"_s, u"zh-Hant"_s, u"zh"_s}, {});
    row("traditional Chinese, then simplified", {u"zh-TW"_s, u"zh"_s, u"zh-CN"_s}, u"zh_Hans"_s);
    row("traditional Chinese, then another language", {u"zh-TW"_s, u"zh"_s, u"ja"_s}, u"ja"_s);
    row("Cantonese", {u"yue-CN"_s}, {});
}

void tst_StringTables::firstLanguageWithATable()
{
    QFETCH(QStringList, languages);
    QFETCH(QString, table);
    const auto resource = table.isEmpty() ? QString() : u":/korvan/localization/KorvanPluginManager_%1.qm"_s.arg(table);
    QCOMPARE(stringTableForLanguages(languages), resource);
}

QTEST_GUILESS_MAIN(tst_StringTables)
#include "tst_stringtables.moc"
