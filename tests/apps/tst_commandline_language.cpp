#include "CommandLineFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// An archive that is refused.
const auto leadingOut = u"" KORVAN_SOURCE_DIR "/fuzz/corpus/zip/link-out.zip"_s;

} // namespace

/// In which language people and other programs get the framework's texts.
class tst_CommandLine_Language : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();

    void languageOfTheEnvironment_data();
    void languageOfTheEnvironment();
    void errorsForPeople_data();
    void errorsForPeople();
    void englishForPrograms();

private:
    void setLanguage(const QByteArray &language) { m_environment = {"LC_ALL=" + language, "LANGUAGE="}; }
};

void tst_CommandLine_Language::init()
{
    makeFolder();
    plugin(u"P"_s, R"({"identifier": "p", "name": "P", "commands": [{"script": "script.js", "identifier": "a"}],
        "menu": {"items": [{"items": ["a"]}]}})");
}

void tst_CommandLine_Language::languageOfTheEnvironment_data()
{
    QTest::addColumn<QList<QByteArray>>("environment");
    QTest::addColumn<QString>("untitled");

    const auto row = [](const char *tag, const QList<QByteArray> &environment, const QString &untitled) {
        QTest::newRow(tag) << environment << untitled;
    };
    row("nothing is set", {"LC_ALL=", "LC_MESSAGES=", "LANG=", "LANGUAGE="}, u"untitled"_s);
    row("LANG", {"LC_ALL=", "LC_MESSAGES=", "LANG=de_AT.UTF-8", "LANGUAGE="}, u"Ohne Titel"_s);
    row("LC_MESSAGES before LANG", {"LC_ALL=", "LC_MESSAGES=fr_CA.UTF-8", "LANG=de_DE", "LANGUAGE="}, u"sans titre"_s);
    row("LC_ALL before all", {"LC_ALL=ja_JP.UTF-8", "LC_MESSAGES=fr_FR", "LANG=de_DE", "LANGUAGE="}, u"名称未設定"_s);
    row("LANGUAGE is a list", {"LC_ALL=", "LC_MESSAGES=", "LANG=pt_BR.UTF-8", "LANGUAGE=pt_BR:zh_CN:de"}, u"未命名"_s);
    row("LANGUAGE does not count in the locale C", {"LC_ALL=C.UTF-8", "LANGUAGE=de"}, u"untitled"_s);
    row("language without texts", {"LC_ALL=pt_BR.UTF-8", "LANGUAGE="}, u"untitled"_s);
    row("traditional Chinese", {"LC_ALL=zh_TW.UTF-8", "LANGUAGE="}, u"untitled"_s);
    row("English before a language with texts", {"LC_ALL=en_GB.UTF-8", "LANGUAGE=en_GB:en:de"}, u"untitled"_s);
}

void tst_CommandLine_Language::languageOfTheEnvironment()
{
    QFETCH(QList<QByteArray>, environment);
    QFETCH(QString, untitled);
    m_environment = environment;
    const auto finished = run({u"menu"_s, u"--folder"_s, u"plugins"_s});
    QCOMPARE(finished.exitCode, 0);
    const auto lines = QString::fromUtf8(finished.output).split(u'\n');
    QVERIFY2(lines.contains(u"    "_s + untitled), finished.output);
}

void tst_CommandLine_Language::errorsForPeople_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("error");

    QTest::newRow("English") << QByteArray("en_US.UTF-8")
                             << u"Can not confirm that the created intermediate folders are sub folders of the "
                                u"destination folder."_s;
    QTest::newRow("German") << QByteArray("de_DE.UTF-8")
                            << u"Es konnte nicht bestätigt werden, dass die angelegten Zwischenordner Unterordner des "
                               u"Zielordners sind."_s;
    QTest::newRow("French") << QByteArray("fr_FR.UTF-8")
                            << u"Impossible de confirmer que les dossiers intermédiaires créés sont des sous-dossiers "
                               u"du dossier de destination."_s;
    QTest::newRow("Japanese") << QByteArray(
        "ja_JP.UTF-8") << u"作成した中間フォルダーが展開先フォルダーのサブフォルダーであることを確認できません。"_s;
    QTest::newRow("simplified Chinese") << QByteArray("zh_CN.UTF-8")
                                        << u"无法确认所创建的中间文件夹是目标文件夹的子文件夹。"_s;
}

void tst_CommandLine_Language::errorsForPeople()
{
    QFETCH(QByteArray, language);
    QFETCH(QString, error);
    setLanguage(language);
    QVERIFY(QDir(m_folder->path()).mkdir(u"outside"_s)); // where the archive's link leads
    const auto finished = run({u"unpack"_s, leadingOut, u"folder"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(!finished.errors.isEmpty()); // before it Qt may say that this machine has no such locale
    QCOMPARE(finished.errors.last(), u"korvan-plugins: "_s + error);
}

void tst_CommandLine_Language::englishForPrograms()
{
    setLanguage("de_DE.UTF-8");
    const auto menu = run({u"menu"_s, u"--folder"_s, u"plugins"_s, u"--json"_s});
    QCOMPARE(menu.exitCode, 0);
    QVERIFY2(menu.output.contains(R"("title": "untitled")"), menu.output);
    QVERIFY(QDir(m_folder->path()).mkdir(u"outside"_s));
    const auto unpacked = run({u"unpack"_s, leadingOut, u"folder"_s, u"--json"_s});
    QCOMPARE(unpacked.json()[u"error"_s][u"message"_s].toString(),
        u"Can not confirm that the created intermediate folders are sub folders of the destination folder."_s);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Language)
#include "tst_commandline_language.moc"
