#include "support/StringTable.h"
#include "support/servers/ChildProcess.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto sources = u"" KORVAN_SOURCE_DIR "/src"_s;
const auto widgetSources = u"" KORVAN_SOURCE_DIR "/widgets"_s;
const auto translations = u"" KORVAN_SOURCE_DIR "/src/localization/translations"_s;
const auto hostSources = u"" KORVAN_SOURCE_DIR "/apps/korvan-host"_s;
const auto hostTranslations = hostSources + u"/translations"_s;

/// "table: key" of each.
QStringList keysOf(const QList<StringTableText> &texts)
{
    QStringList keys;
    for (const auto &text : texts)
        keys.append(text.table + u": "_s + text.key);
    keys.sort();
    return keys;
}

/// What lupdate finds in the sources now.
QStringList keysIn(const QStringList &folders)
{
    const QTemporaryDir folder;
    const auto table = folder.filePath(u"found.ts"_s);
    ChildProcess lupdate({QStringLiteral(KORVAN_LUPDATE),
        QStringList{u"-silent"_s, u"-extensions"_s, u"cpp,h"_s} + folders + QStringList{u"-ts"_s, table}, folder.path(),
        folder.filePath(u"output"_s), {}});
    lupdate.closeInput();
    return lupdate.waitForEnd() == 0 ? keysOf(stringTableTexts(table)) : QStringList();
}

/// The places of a text that something is put into, sorted.
QStringList placeholdersOf(const QString &text)
{
    static const QRegularExpression placeholder(u"%(?:L?\\d{1,2}|n|@)"_s);
    QStringList found;
    for (const auto &match : placeholder.globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// That the string tables hold all texts of the sources, in all languages.
class tst_StringTables_Completeness : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void languages();
    void everyTextIsInTheTable_data() { tables(); }
    void everyTextIsInTheTable();
    void everyTextIsTranslated_data() { tables(); }
    void everyTextIsTranslated();
    void englishIsTheKey();
    void noTextIsHiddenFromTheTools();

private:
    void tables() const;

    QStringList m_keys;
    QStringList m_hostKeys;
};

void tst_StringTables_Completeness::initTestCase()
{
    m_keys = keysIn({sources, widgetSources});
    QVERIFY(m_keys.contains(u"Localizable: untitled"_s));
    m_hostKeys = keysIn({hostSources});
    QVERIFY(m_hostKeys.contains(u"DocumentSession: Untitled"_s));
}

void tst_StringTables_Completeness::tables() const
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("expected");
    for (const auto &name : QDir(translations).entryList(QDir::Files))
        QTest::newRow(qPrintable(name)) << translations + u'/' + name << m_keys;
    for (const auto &name : QDir(hostTranslations).entryList(QDir::Files))
        QTest::newRow(qPrintable(name)) << hostTranslations + u'/' + name << m_hostKeys;
}

void tst_StringTables_Completeness::languages()
{
    const QStringList files{u"KorvanPluginManager_de.ts"_s, u"KorvanPluginManager_en.ts"_s,
        u"KorvanPluginManager_fr.ts"_s, u"KorvanPluginManager_ja.ts"_s, u"KorvanPluginManager_zh_Hans.ts"_s};
    QCOMPARE(QDir(translations).entryList(QDir::Files, QDir::Name), files);
    QStringList hostFiles; // whose English is in its sources
    for (const auto &file : files.filter(QRegularExpression(u"_(?!en)"_s)))
        hostFiles.append(QString(file).replace(u"KorvanPluginManager"_s, u"korvan-host"_s));
    QCOMPARE(QDir(hostTranslations).entryList(QDir::Files, QDir::Name), hostFiles);
}

void tst_StringTables_Completeness::everyTextIsInTheTable()
{
    QFETCH(QString, table);
    QFETCH(QStringList, expected);
    const auto keys = keysOf(stringTableTexts(table));
    for (const auto &key : expected)
        QVERIFY2(keys.contains(key), qPrintable(u"is missing, ./dev translations adds it: "_s + key));
    QCOMPARE(keys, expected); // and no more, and none twice
}

void tst_StringTables_Completeness::everyTextIsTranslated()
{
    QFETCH(QString, table);
    for (const auto &text : stringTableTexts(table)) {
        QVERIFY2(text.state.isEmpty(), qPrintable(text.state + u": "_s + text.key));
        QVERIFY2(!text.translation.trimmed().isEmpty(), qPrintable(text.key));
        QVERIFY2(placeholdersOf(text.translation) == placeholdersOf(text.key), qPrintable(text.translation));
    }
}

void tst_StringTables_Completeness::englishIsTheKey()
{
    for (const auto &text : stringTableTexts(translations + u"/KorvanPluginManager_en.ts"_s))
        QCOMPARE(text.translation, text.key);
}

/// The tools see what goes through Localizable::tr(). The functions for hosts take texts that they cannot see.
void tst_StringTables_Completeness::noTextIsHiddenFromTheTools()
{
    int files = 0;
    for (const auto &folder : {sources, widgetSources}) {
        QDirIterator iterator(folder, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (iterator.hasNext()) {
            const auto path = iterator.next();
            const bool isWhereTheyAre = path.startsWith(sources + u"/localization/"_s);
            QVERIFY2(
                isWhereTheyAre || !contentOf(path).contains("KorvanPluginManagerLocalizedString"), qPrintable(path));
            ++files;
        }
    }
    QVERIFY(files > 100);
}

QTEST_GUILESS_MAIN(tst_StringTables_Completeness)
#include "tst_stringtables_completeness.moc"
