// An update from a web server, through the window for plug-ins, up to the command that it brings.

#include "PluginWindowsFixture.h"
#include "support/archives/ZipBuilder.h"
#include "support/servers/NginxServer.h"
#include "widgets/plugins/PluginListModel.h"
#include "widgets/plugins/PluginUpdatesController.h"

#include <QProgressBar>

using namespace Qt::StringLiterals;

class tst_PluginWindows_Updates : public QObject, private PluginWindowsFixture
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }
    void cleanupTestCase() { m_server.reset(); }

    void toTheNewVersion();
    void allAtOnce();
    void cancelled();
    void failuresInWords_data();
    void failuresInWords();

private:
    QString url(const QString &file) const { return m_server->baseUrl().resolved(QUrl(file)).toString(); }
    void serve(const QString &file, const QByteArray &content) const
    {
        writeFile(m_server->documentRoot() + u'/' + file, content);
    }
    QByteArray manifest(const QString &name, const QByteArray &version) const;
    /// Installs version 1.0, and has the server offer 2.0.
    void pluginWithUpdate(const QString &name) const;
    QByteArray offer(const QString &archive) const;
    void startAndCheck()
    {
        startActive();
        showPlugins();
        click(u"CheckButton"_s);
        QTRY_VERIFY(!pluginsWindow().updates().isChecking());
    }
    QString installedVersion(const QString &name) const
    {
        return m_host->plugins().manager().plugins().value(u"com.example."_s + name)->version().value_or(QString());
    }
    PluginUpdateState state(const QString &name) const
    {
        return pluginsWindow().updates().state(u"com.example."_s + name);
    }
    QString updateText() const { return find<QLabel>(pluginsWindow(), u"UpdateText"_s).text(); }

    std::unique_ptr<NginxServer> m_server;
};

QByteArray tst_PluginWindows_Updates::manifest(const QString &name, const QByteArray &version) const
{
    return R"({"name": ")" + name.toUtf8() + R"(", "identifier": "com.example.)" + name.toUtf8() + R"(", "version": ")"
        + version + R"(", "appcast": ")" + url(name + u".json"_s).toUtf8() + R"(", "commands": [{"name": "Say )"
        + name.toUtf8() + ' ' + version + R"(", "identifier": "say", "script": "script.js"}]})";
}

QByteArray tst_PluginWindows_Updates::offer(const QString &archive) const
{
    return R"({"version": "2.0", "downloadURL": ")" + url(archive).toUtf8() + "\"}";
}

void tst_PluginWindows_Updates::pluginWithUpdate(const QString &name) const
{
    const auto inside = name + u".korvanplugin/Contents/Korvan/"_s;
    writeFile(path(u"plugins/"_s + inside + u"manifest.json"_s), manifest(name, "1.0"));
    writeFile(path(u"plugins/"_s + inside + u"script.js"_s), "function onRun() { print('one'); }");
    serve(name + u".json"_s, offer(name + u".zip"_s));
    serve(name + u".zip"_s,
        ZipBuilder({{inside.toUtf8() + "manifest.json", manifest(name, "2.0")},
                       {inside.toUtf8() + "script.js", "function onRun() { print('two'); }"}})
            .bytes());
}

void tst_PluginWindows_Updates::initTestCase()
{
    m_server = std::make_unique<NginxServer>("location = /slow.zip { limit_rate 20k; }");
    qputenv("SSL_CERT_FILE", QFile::encodeName(m_server->certificateAuthorityFile()));
}

void tst_PluginWindows_Updates::toTheNewVersion()
{
    pluginWithUpdate(u"talker"_s);
    startAndCheck();
    QVERIFY(menuAction(window(), u"Say talker 1.0"_s));
    QCOMPARE(updateText(), u"Version 2.0 is available."_s);
    click(u"UpdateButton"_s);
    QTRY_COMPARE(installedVersion(u"talker"_s), u"2.0"_s);
    QTRY_COMPARE(updateText(), u"Updated to version 2.0."_s);
    QTRY_VERIFY(menuAction(window(), u"Say talker 2.0"_s));
    QVERIFY(!menuAction(window(), u"Say talker 1.0"_s));
    choose({u"Plugins"_s, u"talker"_s, u"Say talker 2.0"_s});
    QTRY_COMPARE(m_log, QStringList{u"two"_s});
    QVERIFY(readFile(path(u"plugins/talker.korvanplugin/Contents/Korvan/script.js"_s)).contains("two"));
}

void tst_PluginWindows_Updates::allAtOnce()
{
    for (const auto &name : {u"one"_s, u"two"_s, u"three"_s})
        pluginWithUpdate(name);
    startAndCheck();
    click(u"UpdateAllButton"_s);
    for (const auto &name : {u"one"_s, u"two"_s, u"three"_s})
        QTRY_COMPARE(installedVersion(name), u"2.0"_s);
    QVERIFY(!find<QPushButton>(pluginsWindow(), u"UpdateAllButton"_s).isEnabled());
}

void tst_PluginWindows_Updates::cancelled()
{
    pluginWithUpdate(u"slow"_s);
    serve(u"slow.zip"_s, QByteArray(2'000'000, 'x'));
    startAndCheck();
    click(u"UpdateButton"_s);
    QTRY_VERIFY(state(u"slow"_s).bytesReceived > 0);
    QCOMPARE(state(u"slow"_s).bytesExpected, 2'000'000);
    QVERIFY(pluginsWindow().findChild<QProgressBar *>()->isVisible());
    click(u"CancelUpdateButton"_s);
    QTRY_VERIFY(!state(u"slow"_s).isUnderWay());
    QCOMPARE(installedVersion(u"slow"_s), u"1.0"_s);
    QVERIFY(menuAction(window(), u"Say slow 1.0"_s));
}

void tst_PluginWindows_Updates::failuresInWords_data()
{
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("nothing is there") << u"gone.zip"_s << QByteArray();
    QTest::newRow("no archive") << u"garbage.zip"_s << QByteArray("garbage");
}

void tst_PluginWindows_Updates::failuresInWords()
{
    QFETCH(QString, archive);
    QFETCH(QByteArray, content);
    pluginWithUpdate(u"talker"_s);
    serve(u"talker.json"_s, offer(archive));
    if (!content.isEmpty())
        serve(archive, content);
    startAndCheck();
    click(u"UpdateButton"_s);
    QTRY_COMPARE(state(u"talker"_s).phase, PluginUpdateState::Phase::Failed);
    QVERIFY2(
        !state(u"talker"_s).message.isEmpty() && updateText() == state(u"talker"_s).message, qPrintable(updateText()));
    QCOMPARE(installedVersion(u"talker"_s), u"1.0"_s);
}

QTEST_MAIN(tst_PluginWindows_Updates)
#include "tst_pluginwindows_updates.moc"
