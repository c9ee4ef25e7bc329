#include "CommandLineFixture.h"

#include <QJsonArray>
#include <QtTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// The commands about the plug-ins menu and the editor.
class tst_CommandLine_Menu : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }

    void menuDescribesEverything();
    void menuForPeople();
    void menusWithoutItems_data();
    void menusWithoutItems();
    void menuOfTheDeepestManifest();
    void editOpensThePlugin();
    void editThatFails_data();
    void editThatFails();
};

void tst_CommandLine_Menu::menuDescribesEverything()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [
        {"script": "script.js", "identifier": "b/2", "name": "Beta", "shortcut": "Cmd Shift K"},
        {"script": "script.js", "identifier": "a"}],
        "menu": {"title": "Tidy", "items": ["b/2", "-", {"title": "More", "items": ["a"]}, {"title": "None"}]}})");
    plugin(u"Q"_s, R"({"identifier": "q", "commands": [{"script": "script.js", "identifier": "c", "name": "alpha"}],
        "menu": {"isRoot": true, "items": ["c", "-"]}})");
    const auto item = [](const QString &title, const QString &command, const QString &key = {}, int modifiers = 0) {
        return QJsonObject{{u"type"_s, u"item"_s}, {u"title"_s, title}, {u"command"_s, command}, {u"key"_s, key},
            {u"modifiers"_s, modifiers}};
    };
    const auto menu = [](const QString &title, const QJsonArray &items) {
        return QJsonObject{{u"type"_s, u"menu"_s}, {u"title"_s, title}, {u"items"_s, items}};
    };
    const QJsonObject separator{{u"type"_s, u"separator"_s}};
    const QJsonArray tidy{item(u"Beta"_s, u"p/b/2"_s, u"k"_s, 0x120000), separator,
        menu(u"More"_s, {item(u"script"_s, u"p/a"_s)}), menu(u"None"_s, {})};

    const auto finished = run({u"menu"_s, u"--folder"_s, u"plugins"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.errors, QStringList());
    const QJsonArray items{separator, item(u"alpha"_s, u"q/c"_s), menu(u"Tidy"_s, tidy)};
    QCOMPARE(finished.json(), QJsonObject({{u"items"_s, items}}));
}

void tst_CommandLine_Menu::menuForPeople()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [
        {"script": "script.js", "identifier": "b", "name": "Beta", "shortcut": "cmd shift k"},
        {"script": "script.js", "identifier": "a", "name": "Alpha", "shortcut": "ctrl option ."}],
        "menu": {"title": "Tidy", "items": ["b", "-", {"title": "More", "items": ["a"]}]}})");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"menu"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(QString::fromUtf8(finished.output), uR"(MENU           SHORTCUT      COMMAND
Tidy
    Beta       Ctrl+Shift+K  p/b
    ────
    More
        Alpha  Meta+Alt+.    p/a
)"_s);
}

void tst_CommandLine_Menu::menusWithoutItems_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("no plug-ins") << QStringList();
    QTest::newRow("only disabled plug-ins") << QStringList{u"--safe-mode"_s, u"--folder"_s, u"plugins"_s};
}

void tst_CommandLine_Menu::menusWithoutItems()
{
    QFETCH(QStringList, options);

    plugin(u"P"_s, R"({"identifier": "p", "commands": [{"script": "script.js"}]})");
    const auto forPeople = run(options + QStringList{u"menu"_s});
    QCOMPARE(forPeople.exitCode, 0);
    QCOMPARE(forPeople.output, QByteArray("The menu is empty.\n"));
    const auto json = run(options + QStringList{u"menu"_s, u"--json"_s});
    QCOMPARE(json.json(), QJsonObject({{u"items"_s, QJsonArray()}}));
}

void tst_CommandLine_Menu::menuOfTheDeepestManifest()
{
    constexpr int depth = 500; // each group is an object and an array, of the 1,024 that a manifest may nest
    const auto opened = QByteArray(R"({"title": "G", "items": [)").repeated(depth);
    plugin(u"P"_s,
        R"({"identifier": "p", "commands": [{"script": "script.js", "name": "Inner", "identifier": "a"}], "menu": {"items": [)"
            + opened + "\"a\"" + QByteArray("]}").repeated(depth) + "]}}");
    for (const auto &format : {QStringList(), QStringList{u"--json"_s}}) {
        const auto finished = run(QStringList{u"menu"_s, u"--folder"_s, u"plugins"_s} + format);
        QCOMPARE(finished.exitCode, 0);
        QVERIFY(finished.output.contains("Inner"));
        QVERIFY(finished.output.count('G') >= depth);
    }
}

void tst_CommandLine_Menu::editOpensThePlugin()
{
    plugin(u"P"_s, R"({"identifier": "p"})");
    const auto pipe = m_folder->filePath(u"told"_s);
    QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
    const auto editor = m_folder->filePath(u"my editor"_s);
    writeFile(editor, "#!/bin/sh\necho chatter\necho \"$#: $1\" >'" + pipe.toUtf8() + "'\n");
    QVERIFY(QFile::setPermissions(editor, QFile::ReadOwner | QFile::ExeOwner));
    const auto path = QDir(m_folder->path()).canonicalPath() + u"/plugins/P.korvanplugin"_s;
    const QStringList arguments{
        u"edit"_s, u"--default"_s, u"Plugin Editor=\"%1\""_s.arg(editor), u"--folder"_s, u"plugins"_s, u"p"_s};
    const auto told = [&pipe] {
        QFile file(pipe);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };

    // The program comes back although the editor still waits for somebody to read what it tells.
    const auto json = run(arguments + QStringList{u"--json"_s});
    QCOMPARE(json.exitCode, 0);
    QCOMPARE(json.output, QByteArray("{\n  \"ok\": true\n}\n"));
    QCOMPARE(json.errors, QStringList());
    QCOMPARE(told(), u"1: %1\n"_s.arg(path));

    const auto forPeople = run(arguments);
    QCOMPARE(forPeople.exitCode, 0);
    QCOMPARE(QString::fromUtf8(forPeople.output), u"Opened %1 in %2.\n"_s.arg(path, editor));
    QCOMPARE(told(), u"1: %1\n"_s.arg(path));
}

void tst_CommandLine_Menu::editThatFails_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QJsonObject>("document");
    QTest::addColumn<QString>("message");

    const auto error = [](const QString &message) {
        return QJsonObject{{u"error"_s, QJsonObject{{u"message"_s, message}}}};
    };
    const auto unknown = u"There is no plug-in \"none\"."_s;
    const auto unset = u"No editor is chosen: the setting \"Plugin Editor\" has to hold its path."_s;
    QTest::newRow("unknown plug-in") << u"none"_s << QStringList{u"--default"_s, u"Plugin Editor=\"/bin/true\""_s}
                                     << error(unknown) << u"korvan-plugins: "_s + unknown;
    QTest::newRow("no editor") << u"p"_s << QStringList() << error(unset) << u"korvan-plugins: "_s + unset;
    QTest::newRow("editor that is no program")
        << u"p"_s << QStringList{u"--default"_s, u"Plugin Editor=\"/bin\""_s} << QJsonObject{{u"ok"_s, false}}
        << u"Couldn't open editor /bin: execv: Permission denied"_s;
}

void tst_CommandLine_Menu::editThatFails()
{
    QFETCH(QString, plugin);
    QFETCH(QStringList, options);
    QFETCH(QString, message);

    CommandLineFixture::plugin(u"P"_s, R"({"identifier": "p"})");
    const auto arguments = QStringList{u"edit"_s, plugin, u"--folder"_s, u"plugins"_s} + options;
    const auto forPeople = run(arguments);
    QCOMPARE(forPeople.exitCode, 1);
    QCOMPARE(forPeople.output, QByteArray());
    QCOMPARE(forPeople.errors, QStringList{message});
    const auto json = run(arguments + QStringList{u"--json"_s});
    QCOMPARE(json.exitCode, 1);
    QTEST(json.json(), "document");
}

QTEST_GUILESS_MAIN(tst_CommandLine_Menu)
#include "tst_commandline_menu.moc"
