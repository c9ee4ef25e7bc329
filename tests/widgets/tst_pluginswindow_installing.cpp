// The window for plug-ins: what is installed from files, and updates.

#include "PluginsWindowFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PluginsWindow_Installing : public QObject, private PluginsWindowFixture
{
    Q_OBJECT

private slots:
    void init() { setUpWindow(); }
    void cleanup() { tearDownWindow(); }

    void installByDrop();
    void dropOfSomethingElse();
    void installThatFails();
    void replacingIsAsked();
    void windowGoesWhileItAsks();
    void updating();
    void cancelling();
    void failedUpdate();
    void updateAll();
    void cancellingAll();
};

void tst_PluginsWindow_Installing::updating()
{
    installWithUpdate(u"a"_s);
    m_window->selectPlugin(u"a"_s);
    show();
    QVERIFY(!find<QPushButton>(u"UpdateAllButton"_s)->isEnabled());
    QVERIFY(!find<QLabel>(u"UpdateText"_s)->isVisible());
    check();
    QCOMPARE(label(u"UpdateText"_s), u"Version 2.0 is available."_s);
    QCOMPARE(label(u"PluginStatus"_s), u"Plug-ins: 1  ·  Updates: 1"_s);
    click(u"UpdateButton"_s);
    waitUntil([this] { return installedVersion(u"a"_s) == u"2.0"_s; });
    QCOMPARE(label(u"UpdateText"_s), u"Updated to version 2.0."_s);
    QCOMPARE(label(u"PluginOrigin"_s), u"Version 2.0"_s);
}

void tst_PluginsWindow_Installing::cancelling()
{
    installWithUpdate(u"a"_s);
    m_server->setAnswer("/a.zip",
        Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n")
            .thenBytes(QByteArray(1'500'000, 'x'))
            .thenStall());
    m_window->selectPlugin(u"a"_s);
    show();
    check();
    click(u"UpdateButton"_s);
    waitUntil([this] { return m_window->updates().state(u"a"_s).bytesReceived == 1'500'000; });
    QVERIFY2(label(u"UpdateText"_s).startsWith(u"1.5 MB of 3.0 MB downloaded"_s), qPrintable(label(u"UpdateText"_s)));
    click(u"CancelUpdateButton"_s);
    waitUntil([this] { return !m_window->updates().state(u"a"_s).isUnderWay(); });
    QCOMPARE(label(u"UpdateText"_s), u"Version 2.0 is available."_s);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginsWindow_Installing::failedUpdate()
{
    installWithUpdate(u"a"_s);
    m_server->setAnswer("/a.zip", Answer::response(200, "broken"));
    m_window->selectPlugin(u"a"_s);
    show();
    check();
    click(u"UpdateButton"_s);
    waitUntil([this] { return !m_window->updates().state(u"a"_s).isUnderWay(); });
    QCOMPARE(label(u"UpdateText"_s), u"The archive of the update is empty or cannot be read."_s);
    QCOMPARE(find<QPushButton>(u"UpdateButton"_s)->text(), u"&Try Again"_s);
    QVERIFY(find<QPushButton>(u"UpdateButton"_s)->isVisible());
}

void tst_PluginsWindow_Installing::updateAll()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    show();
    check();
    click(u"UpdateAllButton"_s);
    waitUntil([this] { return installedVersion(u"b"_s) == u"2.0"_s; });
    QCOMPARE(installedVersion(u"a"_s), u"2.0"_s);
    QVERIFY(!find<QPushButton>(u"UpdateAllButton"_s)->isEnabled());
}

void tst_PluginsWindow_Installing::cancellingAll()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    m_server->setAnswer("/a.zip", Answer::silence());
    show();
    check();
    QVERIFY(!find<QPushButton>(u"CancelAllButton"_s)->isVisible());
    click(u"UpdateAllButton"_s);
    QVERIFY(!find<QPushButton>(u"UpdateAllButton"_s)->isVisible());
    click(u"CancelAllButton"_s);
    waitUntil([this] { return m_window->updates().underWay().isEmpty(); });
    QVERIFY(find<QPushButton>(u"UpdateAllButton"_s)->isEnabled());
    QVERIFY(find<QPushButton>(u"UpdateAllButton"_s)->isVisible());
    QVERIFY(!find<QPushButton>(u"CancelAllButton"_s)->isVisible());
}

void tst_PluginsWindow_Installing::installByDrop()
{
    show();
    const auto bundle = writePlugin(m_environment->path(u"downloads"_s), {u"b"_s, u"Zoom"_s});
    drop({QUrl::fromLocalFile(archiveFile({u"a"_s, u"Tidy"_s})), bundle.url()}, true);
    waitUntil([this] { return m_manager->plugins().size() == 2; });
    QCOMPARE(list()->model()->rowCount(), 2);
    QVERIFY(notice().contains(u"is installed, in version 1.0."_s));
}

void tst_PluginsWindow_Installing::dropOfSomethingElse()
{
    show();
    drop({QUrl::fromLocalFile(file(u"a.txt"_s, "x")), QUrl(u"https://example.com/a.zip"_s)}, false);
}

void tst_PluginsWindow_Installing::installThatFails()
{
    show();
    m_window->installFiles({file(u"<b>a.zip"_s, "no archive")});
    waitForNotice();
    QCOMPARE(notice(), u"“<b>a.zip” is no archive, is empty or cannot be read."_s);
    QTest::mouseClick(find<QWidget>(u"NoticeBanner"_s)->findChild<QWidget *>(u"BannerClose"_s), Qt::LeftButton);
    QCOMPARE(notice(), QString());
}

void tst_PluginsWindow_Installing::replacingIsAsked()
{
    install({u"a"_s, u"Tidy"_s});
    show();
    const auto archive = archiveFile({u"a"_s, u"Tidy"_s, u"0.9"_s});
    m_window->installFiles({archive});
    waitUntil([this] { return question() != nullptr; });
    QCOMPARE(question()->text(), u"Replace “Tidy”?"_s);
    QCOMPARE(question()->informativeText(), u"Version 1.0 is installed. The file holds version 0.9, which is older."_s);
    answer(QMessageBox::RejectRole);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
    QVERIFY(!question());
    m_window->installFiles({archive});
    waitUntil([this] { return question() != nullptr; });
    answer(QMessageBox::AcceptRole);
    QCOMPARE(installedVersion(u"a"_s), u"0.9"_s);
}

void tst_PluginsWindow_Installing::windowGoesWhileItAsks()
{
    install({u"a"_s, u"Tidy"_s});
    show();
    m_window->installFiles({archiveFile({u"a"_s, u"Tidy"_s, u"2.0"_s})});
    waitUntil([this] { return question() != nullptr; });
    m_window.reset();
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
    QCOMPARE(QDir(m_environment->path(u"support/PluginStaging"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
        QStringList());
}

QTEST_MAIN(tst_PluginsWindow_Installing)
#include "tst_pluginswindow_installing.moc"
