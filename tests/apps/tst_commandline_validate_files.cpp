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

QTEST_GUILESS_MAIN(tst_CommandLine_Validate_Files)
#include "tst_commandline_validate_files.moc"
