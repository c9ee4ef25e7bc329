#include "widgets/console/LogLocation.h"

#include "support/BundleBuilder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LogLocation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void places_data();
    void places();
    void folderThatIsGone();

private:
    QString plugin() const { return QDir(m_folder.path()).canonicalPath() + u"/Tidy.korvanplugin"_s; }

    QTemporaryDir m_folder;
};

void tst_LogLocation::initTestCase()
{
    BundleBuilder(m_folder.path(), u"Tidy"_s).script(u"tidy.js"_s, "x").script(u"a (b):1.js"_s, "x");
    writeFile(m_folder.filePath(u"secret.js"_s), "x");
    QVERIFY(QFile::link(u"../../../secret.js"_s, plugin() + u"/Contents/Korvan/link.js"_s));
}

void tst_LogLocation::places_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("line");

    const auto error = u"Uncaught script exception: TypeError: x"_s;
    const auto script = u"Contents/Korvan/tidy.js"_s;
    QTest::newRow("a function's call") << error + u"\n    at onRun (Contents/Korvan/tidy.js:12:3)"_s << script << 12;
    QTest::newRow("a call outside of functions") << error + u"\n    at Contents/Korvan/tidy.js:1:1"_s << script << 1;
    QTest::newRow("the innermost one that is a file")
        << error + u"\n    at native (nowhere.js:1:1)\n    at onRun (Contents/Korvan/tidy.js:7:1)"_s << script << 7;
    QTest::newRow("parentheses and colons in the name")
        << error + u"\n    at Contents/Korvan/a (b):1.js:4:2"_s << u"Contents/Korvan/a (b):1.js"_s << 4;
    QTest::newRow("no place") << error << QString() << 0;
    QTest::newRow("a place in the message's own line") << u"    at Contents/Korvan/tidy.js:1:1"_s << QString() << 0;
    QTest::newRow("a line that is no number") << error + u"\n    at Contents/Korvan/tidy.js:x:1"_s << QString() << 0;
    QTest::newRow("line 0") << error + u"\n    at Contents/Korvan/tidy.js:0:1"_s << QString() << 0;
    QTest::newRow("upwards") << error + u"\n    at ../secret.js:1:1"_s << QString() << 0;
    QTest::newRow("from the root") << error + u"\n    at /etc/passwd:1:1"_s << QString() << 0;
    QTest::newRow("a link outside") << error + u"\n    at Contents/Korvan/link.js:1:1"_s << QString() << 0;
    QTest::newRow("a folder") << error + u"\n    at Contents:1:1"_s << QString() << 0;
    QTest::newRow("half a place") << error + u"\n    at :1"_s << QString() << 0;
    QTest::newRow("empty") << QString() << QString() << 0;
}

void tst_LogLocation::places()
{
    QFETCH(QString, text);
    QFETCH(QString, file);
    QFETCH(int, line);
    const auto found = locationIn(text, QUrl::fromLocalFile(plugin() + u'/'));
    const auto expected =
        file.isEmpty() ? std::nullopt : std::optional(LogLocation{QUrl::fromLocalFile(plugin() + u'/' + file), line});
    QCOMPARE(found, expected);
}

void tst_LogLocation::folderThatIsGone()
{
    const auto text = u"x\n    at Contents/Korvan/tidy.js:1:1"_s;
    QCOMPARE(locationIn(text, QUrl(u"file:///nowhere/"_s)), std::nullopt);
    QCOMPARE(locationIn(text, QUrl()), std::nullopt);
}

QTEST_GUILESS_MAIN(tst_LogLocation)
#include "tst_loglocation.moc"
