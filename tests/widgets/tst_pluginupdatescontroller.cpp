#include "widgets/plugins/PluginUpdatesController.h"

#include "PluginsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using Phase = PluginUpdateState::Phase;

class tst_PluginUpdatesController : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingIsKnownAtFirst();
    void checkFindsUpdates();
    void checkOfPluginsWithoutFeeds();
    void failedFeed();
    void secondCheckWhileOneRuns();
    void versionThatDoesNotWorkIsNotOffered();
    void updateIsInstalled();
    void updateThatLiesInTheWarehouse();
    void allOfThem();
    void progress();
    void brokenArchive();
    void downloadThatBreaksOff();
    void failedDownloadCanBeTriedAgain();
    void cancelDownload();
    void cancelWhileWaiting();
    void cancelAll();
    void checkWhileUpdatesWait();
    void nothingToUpdate();

private:
    void check();
    Phase phase(const QString &identifier) const { return m_updates->state(identifier).phase; }
    void waitForPhase(const QString &identifier, Phase expected)
    {
        waitUntil([&] { return phase(identifier) == expected; });
    }

    std::unique_ptr<PluginUpdatesController> m_updates;
};

void tst_PluginUpdatesController::init()
{
    setUp();
    m_updates = std::make_unique<PluginUpdatesController>(*m_manager);
}

void tst_PluginUpdatesController::cleanup()
{
    m_updates.reset();
    tearDown();
}

void tst_PluginUpdatesController::check()
{
    m_updates->check();
    waitUntil([this] { return !m_updates->isChecking(); });
}

void tst_PluginUpdatesController::nothingIsKnownAtFirst()
{
    installWithUpdate(u"a"_s);
    QCOMPARE(m_updates->state(u"a"_s), PluginUpdateState());
    QCOMPARE(m_updates->available(), QStringList());
    QVERIFY(!m_updates->isChecking());
}

void tst_PluginUpdatesController::checkFindsUpdates()
{
    installWithUpdate(u"b"_s);
    installWithUpdate(u"a"_s);
    install({u"c"_s, u"c"_s, u"2.0"_s, m_server->url(u"/a.json"_s)}); // has it already
    install({u"d"_s, u"d"_s}); // has no feed
    QSignalSpy checking(m_updates.get(), &PluginUpdatesController::checkingChanged);
    m_updates->check();
    QVERIFY(m_updates->isChecking());
    QCOMPARE(phase(u"a"_s), Phase::Checking);
    QCOMPARE(phase(u"d"_s), Phase::Idle);
    waitUntil([this] { return !m_updates->isChecking(); });
    QCOMPARE(m_updates->available(), QStringList({u"a"_s, u"b"_s}));
    QCOMPARE(m_updates->state(u"a"_s).version, u"2.0"_s);
    QCOMPARE(phase(u"c"_s), Phase::Idle);
    QCOMPARE(checking, QList<QVariantList>({{true}, {false}}));
}

void tst_PluginUpdatesController::checkOfPluginsWithoutFeeds()
{
    install({u"d"_s, u"d"_s});
    check();
    QCOMPARE(phase(u"d"_s), Phase::Idle);
    QCOMPARE(m_server->requestedPaths(), QList<QByteArray>());
}

void tst_PluginUpdatesController::failedFeed()
{
    installWithUpdate(u"a"_s);
    m_server->setAnswer("/a.json", Answer::response(200, "no feed"));
    check();
    QCOMPARE(phase(u"a"_s), Phase::Failed);
    QVERIFY(m_updates->state(u"a"_s).message.contains(u"is not valid JSON"_s));
    m_updates->update(u"a"_s); // there is nothing to try again
    QCOMPARE(phase(u"a"_s), Phase::Failed);
}

void tst_PluginUpdatesController::secondCheckWhileOneRuns()
{
    installWithUpdate(u"a"_s);
    m_updates->check();
    m_updates->check();
    waitUntil([this] { return !m_updates->isChecking(); });
    QCOMPARE(m_server->requestedPaths(), QList<QByteArray>{"/a.json"});
}

void tst_PluginUpdatesController::versionThatDoesNotWorkIsNotOffered()
{
    installWithUpdate(u"a"_s);
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"2.0"_s}});
    check();
    QCOMPARE(phase(u"a"_s), Phase::Idle);
}

void tst_PluginUpdatesController::updateIsInstalled()
{
    installWithUpdate(u"a"_s);
    check();
    QList<Phase> phases;
    connect(m_updates.get(), &PluginUpdatesController::stateChanged, this, [this, &phases](const QString &identifier) {
        if (phases.isEmpty() || phases.last() != phase(identifier))
            phases.append(phase(identifier));
    });
    m_updates->update(u"a"_s);
    waitForPhase(u"a"_s, Phase::Installed);
    QCOMPARE(phases, QList<Phase>({Phase::Waiting, Phase::Downloading, Phase::Installing, Phase::Installed}));
    QCOMPARE(installedVersion(u"a"_s), u"2.0"_s);
    QCOMPARE(m_updates->state(u"a"_s).version, u"2.0"_s);
    QCOMPARE(m_updates->available(), QStringList());
    check();
    QCOMPARE(phase(u"a"_s), Phase::Idle);
}

void tst_PluginUpdatesController::updateThatLiesInTheWarehouse()
{
    installWithUpdate(u"a"_s);
    check();
    bool isDownloaded = false;
    m_manager->downloadPluginUpdates(
        *m_manager->latestPluginUpdatesNotDownloaded(), [&](const auto &) { isDownloaded = true; });
    waitUntil([&] { return isDownloaded; });
    const auto requests = m_server->requestedPaths().size();
    m_updates->update(u"a"_s);
    QCOMPARE(phase(u"a"_s), Phase::Installed);
    QCOMPARE(m_server->requestedPaths().size(), requests);
}

void tst_PluginUpdatesController::allOfThem()
{
    for (const auto &identifier : {u"a"_s, u"b"_s, u"c"_s})
        installWithUpdate(identifier);
    check();
    m_updates->updateAll();
    QCOMPARE(phase(u"a"_s), Phase::Downloading);
    QCOMPARE(phase(u"c"_s), Phase::Waiting);
    waitForPhase(u"c"_s, Phase::Installed);
    for (const auto &identifier : {u"a"_s, u"b"_s, u"c"_s})
        QCOMPARE(installedVersion(identifier), u"2.0"_s);
}

void tst_PluginUpdatesController::progress()
{
    installWithUpdate(u"a"_s);
    auto plugin = pluginWithFeed(u"a"_s);
    plugin.version = u"2.0"_s;
    const auto archive = archiveOf(plugin);
    m_server->setAnswer("/a.zip",
        Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(archive.size()) + "\r\n\r\n")
            .thenBytes(archive.left(100))
            .thenWaitForRelease()
            .thenBytes(archive.mid(100)));
    check();
    m_updates->update(u"a"_s);
    waitUntil([this] { return m_updates->state(u"a"_s).bytesReceived == 100; });
    QCOMPARE(m_updates->state(u"a"_s).bytesExpected, qint64(archive.size()));
    m_server->release();
    waitForPhase(u"a"_s, Phase::Installed);
}

void tst_PluginUpdatesController::brokenArchive()
{
    installWithUpdate(u"a"_s);
    m_server->setAnswer("/a.zip", Answer::response(200, "no archive"));
    check();
    m_updates->update(u"a"_s);
    waitForPhase(u"a"_s, Phase::Failed);
    QCOMPARE(m_updates->state(u"a"_s).message, u"The archive of the update is empty or cannot be read."_s);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginUpdatesController::downloadThatBreaksOff()
{
    installWithUpdate(u"a"_s);
    m_server->setAnswer(
        "/a.zip", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 3000\r\n\r\n").thenBytes(QByteArray(1500, 'x')));
    check();
    m_updates->update(u"a"_s);
    waitForPhase(u"a"_s, Phase::Failed);
    QCOMPARE(m_updates->state(u"a"_s).message, u"The connection to \"127.0.0.1\" was lost."_s);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
    QVERIFY(!m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s));
}

void tst_PluginUpdatesController::failedDownloadCanBeTriedAgain()
{
    installWithUpdate(u"a"_s);
    auto plugin = pluginWithFeed(u"a"_s);
    plugin.version = u"2.0"_s;
    m_server->setAnswers("/a.zip", {Answer::response(500), Answer::response(200, archiveOf(plugin))});
    check();
    m_updates->update(u"a"_s);
    waitForPhase(u"a"_s, Phase::Failed);
    QVERIFY(!m_updates->state(u"a"_s).message.isEmpty());
    QCOMPARE(m_updates->state(u"a"_s).version, u"2.0"_s);
    m_updates->update(u"a"_s);
    waitForPhase(u"a"_s, Phase::Installed);
}

void tst_PluginUpdatesController::cancelDownload()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    m_server->setAnswer("/a.zip", Answer::silence());
    check();
    m_updates->updateAll();
    m_server->waitForRequests(3);
    m_updates->cancel(u"a"_s);
    waitForPhase(u"b"_s, Phase::Installed); // the others go on
    QCOMPARE(phase(u"a"_s), Phase::Available);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginUpdatesController::cancelWhileWaiting()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    check();
    m_updates->updateAll();
    m_updates->cancel(u"b"_s);
    QCOMPARE(phase(u"b"_s), Phase::Available);
    waitForPhase(u"a"_s, Phase::Installed);
    QCOMPARE(phase(u"b"_s), Phase::Available);
    QVERIFY(!m_server->requestedPaths().contains("/b.zip"));
}

void tst_PluginUpdatesController::cancelAll()
{
    for (const auto &identifier : {u"a"_s, u"b"_s, u"c"_s})
        installWithUpdate(identifier);
    m_server->setAnswer("/a.zip", Answer::silence());
    check();
    m_updates->updateAll();
    QCOMPARE(m_updates->underWay(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    m_server->waitForRequests(4);
    m_updates->cancelAll();
    waitForPhase(u"a"_s, Phase::Available);
    QCOMPARE(m_updates->available(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(m_updates->underWay(), QStringList());
    QVERIFY(!m_server->requestedPaths().contains("/b.zip"));
}

void tst_PluginUpdatesController::checkWhileUpdatesWait()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    check();
    m_updates->updateAll();
    m_updates->check();
    QCOMPARE(phase(u"b"_s), Phase::Waiting);
    waitForPhase(u"b"_s, Phase::Installed);
    QCOMPARE(installedVersion(u"a"_s), u"2.0"_s);
}

void tst_PluginUpdatesController::nothingToUpdate()
{
    m_updates->update(u"unknown"_s);
    m_updates->cancel(u"unknown"_s);
    m_updates->updateAll();
    check();
    QCOMPARE(m_updates->available(), QStringList());
}

QTEST_MAIN(tst_PluginUpdatesController)
#include "tst_pluginupdatescontroller.moc"
