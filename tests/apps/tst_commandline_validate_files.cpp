// Checking plug-ins whose files are not what they should be, be it by malice.

#include "ValidateFixture.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_CommandLine_Validate_Files : public QObject, private ValidateFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void manifestThatIsNoFile_data();
    void manifestThatIsNoFile();
    void modules_data();
    void modules();
    void icons_data();
    void icons();
    void outside_data();
    void outside();
    void manifests_data();
    void manifests();
    void manyMistakes();
    void eachProblemIsALine();

private:
    QString inside(const QString &path) const
    {
        return m_folder->filePath(u"plugins/x.korvanplugin/Contents/"_s + path);
    }
};

void tst_CommandLine_Validate_Files::manifestThatIsNoFile_data()
{
    QTest::addColumn<QByteArray>("link"); // none: a pipe
    QTest::addColumn<QString>("message");
    QTest::newRow("a pipe that nobody writes to") << ""_ba << u"Not a regular file"_s;
    QTest::newRow("a device that never ends") << "/dev/zero"_ba << u"Not a regular file"_s;
    QTest::newRow("a folder") << "."_ba << u"Is a directory"_s;
}

void tst_CommandLine_Validate_Files::manifestThatIsNoFile()
{
    QFETCH(QByteArray, link);
    QFETCH(QString, message);
    plugin(u"x"_s, "{}");
    const auto manifest = inside(u"Korvan/manifest.json"_s);
    QVERIFY(QFile::remove(manifest));
    const auto path = QFile::encodeName(manifest);
    QCOMPARE(link.isEmpty() ? ::mkfifo(path.constData(), 0600) : ::symlink(link.constData(), path.constData()), 0);
    QCOMPARE(reports(), QStringList{u"error manifest.json:1:1: The file cannot be read: %1."_s.arg(message)});
}

void tst_CommandLine_Validate_Files::modules_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("expected");
    const auto reported = [](const QString &place, const QString &message) {
        return QStringList{u"%1 commands[0].script: %2"_s.arg(place, message)};
    };
    const auto gone = u"Cannot find module './gone'."_s;
    QTest::newRow("there, in all ways of naming it")
        << "require('./lib/a.js'); require('./lib/a'); require(`./data`); require('./lib'); require('../Korvan/data')"_ba
        << QStringList();
    QTest::newRow("of the application") << "require('korvan/dom'); require('util'); require('node:path')"_ba
                                        << QStringList();
    QTest::newRow("for data, which the manifest does not speak of")
        << "const { register } =\n  require( 'korvan/data-supplier' )"_ba
        << reported(u"warning script.js:2:3"_s,
               u"Hosts ask no plug-in for data whose manifest does not say “\"suppliesData\": true”."_s);
    QTest::newRow("missing") << "// require('./nothing')\nconst {a} = require('./gone')"_ba
                             << reported(u"error script.js:2:21"_s, gone);
    QTest::newRow("missing where it may not be reached")
        << "try { require('./gone') } catch { }"_ba << reported(u"warning script.js:1:15"_s, gone);
    QTest::newRow("another case") << "require('./Data')"_ba
                                  << reported(u"error script.js:1:9"_s, u"Cannot find module './Data'."_s);
    QTest::newRow("without the dot")
        << "require('lib/a')"_ba
        << reported(u"error script.js:1:9"_s,
               u"Cannot find module 'lib/a'. Files of the plug-in are required as './lib/a'."_s);
    QTest::newRow("outside") << "require('../../../y')"_ba
                             << reported(
                                    u"error script.js:1:9"_s, u"Module '../../../y' lies outside of the plug-in."_s);
    QTest::newRow("in a module") << "require('./lib/broken')"_ba << reported(u"error lib/broken.js:2:9"_s, gone);
    QTest::newRow("modules that need each other") << "require('./lib/a'); require('./lib/b')"_ba << QStringList();
    QTest::newRow("names that are computed") << "require('./' + 'gone'); require(gone)\nvar gone"_ba << QStringList();
    QTest::newRow("members of that name")
        << "var o = {}; o.require('./gone'); o?.require('./gone')"_ba << QStringList();
    QTest::newRow("another require") << "(function (require) { require('./gone') })(() => 1)\nrequire('./gone')"_ba
                                     << QStringList();
}

void tst_CommandLine_Validate_Files::modules()
{
    QFETCH(QByteArray, script);
    plugin(u"x"_s, R"({"commands": [{"script": "script.js"}]})", script + "\nfunction onRun() {}");
    writeFile(inside(u"Korvan/data.json"_s), "{}");
    writeFile(inside(u"Korvan/lib/index.js"_s), "");
    writeFile(inside(u"Korvan/lib/a.js"_s), "require('./b')");
    writeFile(inside(u"Korvan/lib/b.js"_s), "require('./a')");
    writeFile(inside(u"Korvan/lib/broken.js"_s), "require('..')\nrequire('./gone')");
    writeFile(inside(u"Korvan/index.js"_s), "");
    QTEST(reports(), "expected");
}

void tst_CommandLine_Validate_Files::icons_data()
{
    QTest::addColumn<QByteArray>("icon");
    QTest::addColumn<bool>("isGood");
    const auto svg = [](const QByteArray &content) {
        return R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9">)" + content + "</svg>";
    };
    QTest::newRow("PNG") << fileContent(
        examples + u"/plugins/Tidy Layers.korvanplugin/Contents/Resources/icons/tidy.png"_s)
                         << true;
    QTest::newRow("SVG") << svg("<rect width=\"5\" height=\"5\"/>") << true;
    QTest::newRow("SVG with texts, which hosts have fonts for") << svg("<text y=\"9\">a</text>") << true;
    QTest::newRow("empty") << ""_ba << false;
    QTest::newRow("text") << "no image"_ba << false;
    QTest::newRow("cut off") << svg("<rect/>").chopped(3) << false;
    QTest::newRow("SVG with a file inside") << svg("<image href=\"/dev/zero\" width=\"9\" height=\"9\"/>") << false;
    QTest::newRow("SVG with entities") << "<!DOCTYPE svg [<!ENTITY a \"b\">]>" + svg("<text>&a;</text>") << false;
    QTest::newRow("SVG of groups in groups") << svg("<g>"_ba.repeated(9999) + "</g>"_ba.repeated(9999)) << false;
}

void tst_CommandLine_Validate_Files::icons()
{
    QFETCH(QByteArray, icon);
    QFETCH(bool, isGood);
    plugin(u"x"_s, R"({"icon": "i"})");
    writeFile(inside(u"Resources/i"_s), icon);
    const auto report =
        u"error manifest.json:1:10 icon: The file “Contents/Resources/i” is no image that hosts show: it may be damaged, or too large."_s;
    QCOMPARE(reports(), isGood ? QStringList() : QStringList{report});
}

void tst_CommandLine_Validate_Files::outside_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("report");
    QTest::newRow("script") << u"Korvan/linked"_s
                            << u"warning manifest.json:1:26 commands[0].script: “linked” is not in the bundle."_s;
    QTest::newRow("icon") << u"Resources/linked"_s
                          << u"warning manifest.json:1:46 icon: “linked” is not in the bundle."_s;
}

/// What is linked from elsewhere is there for the author only.
void tst_CommandLine_Validate_Files::outside()
{
    QFETCH(QString, link);
    QFETCH(QString, report);
    plugin(u"x"_s, R"({"commands": [{"script": "linked"}], "icon": "linked"})");
    const auto picture = examples + u"/plugins/Tidy Layers.korvanplugin/Contents/Resources/icons/tidy.png"_s;
    writeFile(inside(u"Korvan/linked"_s), "function onRun() {}");
    writeFile(inside(u"Resources/linked"_s), fileContent(picture));
    QCOMPARE(reports(), QStringList());
    QVERIFY(QDir().rename(inside(link), m_folder->filePath(u"elsewhere"_s)));
    QVERIFY(QFile::link(m_folder->filePath(u"elsewhere"_s), inside(link)));
    QCOMPARE(reports(), QStringList{report});
}

void tst_CommandLine_Validate_Files::manifests_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a slash behind a script")
        << R"({"commands": [{"script": "script.js/"}]})"_ba
        << QStringList{
               u"error manifest.json:1:26 commands[0].script: There is no file “Contents/Korvan/script.js/”."_s};
    QTest::newRow("a script by way of nothing")
        << R"({"commands": [{"script": "none/../script.js"}]})"_ba
        << QStringList{
               u"error manifest.json:1:26 commands[0].script: There is no file “Contents/Korvan/none/../script.js”."_s};
    QTest::newRow("zeros in names")
        << R"({"icon": "a\u0000", "commands": [{"script": "script.js\u0000"}]})"_ba
        << QStringList{u"error manifest.json:1:10 icon: There is no file “Contents/Resources/a%1”."_s.arg(QChar()),
               u"error manifest.json:1:45 commands[0].script: There is no file “Contents/Korvan/script.js%1”."_s.arg(
                   QChar())};
    QTest::newRow("an identifier that leads elsewhere")
        << R"({"identifier": "a/../../b"})"_ba
        << QStringList{
               u"warning manifest.json:1:16 identifier: “a/../../b” names no folder, so that hosts do not download updates."_s};
    QTest::newRow("an identifier with an escape")
        << R"({"identifier": "a\u001b[2J"})"_ba
        << QStringList{u"warning manifest.json:1:16 identifier: “a\u001b[2J” has control characters."_s};
    QTest::newRow("two dots in an identifier") << R"({"identifier": "a..b/c"})"_ba << QStringList();
    QTest::newRow("a line end behind a version")
        << R"({"compatibleVersion": "1.0\n"})"_ba
        << QStringList{
               u"error manifest.json:1:23 compatibleVersion: “1.0\n” is no version such as 1.2 or 2.0-beta.1."_s};
    QTest::newRow("a number below all")
        << R"({"version": 0.1e-400})"_ba
        << QStringList{
               u"warning manifest.json:1:13 version: The number 0.1e-400 is read as version 0. Write it as a string."_s};
}

void tst_CommandLine_Validate_Files::manifests()
{
    QFETCH(QByteArray, manifest);
    plugin(u"x"_s, manifest);
    QTEST(reports(), "expected");
}

/// All on one line, which is gone through once and not for each of them.
void tst_CommandLine_Validate_Files::manyMistakes()
{
    constexpr int count = 50'000;
    QByteArray items;
    for (int i = 0; i < count; ++i)
        items += (i > 0 ? ",\"i" : "\"i") + QByteArray::number(i) + '"';
    plugin(u"x"_s, R"({"commands": [{"script": "script.js"}], "menu": {"items": [)" + items + "]}}");
    const auto found = reports();
    QCOMPARE(found.size(), count);
    QCOMPARE(found.last(),
        u"error manifest.json:1:%1 menu.items[49999]: There is no command “i49999”."_s.arg(
            59 + items.lastIndexOf('i')));
}

void tst_CommandLine_Validate_Files::eachProblemIsALine()
{
    plugin(u"x"_s, R"({"a\nb.json:1:1: error: c": 1})");
    const auto finished = run({u"validate"_s, u"plugins/x.korvanplugin"_s});
    QCOMPARE(QString::fromUtf8(finished.output),
        uR"(plugins/x.korvanplugin/Contents/Korvan/manifest.json:1:2: warning: “a\u000ab.json:1:1: error: c” means nothing here. (a\u000ab.json:1:1: error: c)
1 plug-in checked: 0 errors, 1 warning.
)"_s);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Validate_Files)
#include "tst_commandline_validate_files.moc"
