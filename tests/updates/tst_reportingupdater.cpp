#include "updates/ReportingUpdater.h"

#include "support/UpdatesFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_ReportingUpdater : public QObject, private UpdatesFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingHasFailed();
    void failedTransfer();
    void failedUnpacking();
    void takingForgets();
    void singleDownloadsTellTheirOwnErrors();

private:
    UpdateList updates() const { return *m_manager->latestPluginUpdatesNotDownloaded(); }

    std::shared_ptr<ReportingUpdater> m_updater;
};

void tst_ReportingUpdater::init()
{
    setUp();
    m_updater = std::make_shared<ReportingUpdater>();
    makeManager(m_updater);
    pluginWithUpdate();
}

void tst_ReportingUpdater::cleanup()
{
    m_updater.reset();
    QCOMPARE(tearDown(), QStringList());
}

void tst_ReportingUpdater::nothingHasFailed()
{
    answer("/a.zip", pluginArchive(u"a"_s, u"2.0"_s));
    downloadAll(updates());
    QCOMPARE(m_updater->errors(), QList<KRError>());
    QVERIFY(isInWarehouse(u"a/2.0"_s));
}

void tst_ReportingUpdater::failedTransfer()
{
    m_server->setAnswer("/a.zip", Answer::bytes("nonsense"));
    downloadAll(updates());
    QCOMPARE(m_updater->errors().size(), 1);
    QVERIFY(!m_updater->errors().first().localizedDescription.isEmpty());
}

void tst_ReportingUpdater::failedUnpacking()
{
    answer("/a.zip", ZipBuilder().add({"../outside", "x"}).bytes());
    downloadAll(updates());
    QCOMPARE(m_updater->errors().size(), 1);
    QCOMPARE(m_updater->errors().first().domain, u"com.veldmark.pluginmanager.updating"_s);
}

void tst_ReportingUpdater::takingForgets()
{
    m_server->setAnswer("/a.zip", Answer::bytes("nonsense"));
    downloadAll(updates());
    const auto errors = m_updater->errors();
    QCOMPARE(m_updater->takeErrors(), errors);
    QCOMPARE(m_updater->errors(), QList<KRError>());
    QCOMPARE(m_updater->takeErrors(), QList<KRError>());
}

void tst_ReportingUpdater::singleDownloadsTellTheirOwnErrors()
{
    m_server->setAnswer("/a.zip", Answer::bytes("nonsense"));
    m_manager->downloadPluginUpdate(
        u"a"_s, u"2.0"_s, [this](const std::optional<KRError> &error) { tell(error ? u"failed"_s : u"done"_s); });
    waitFor(u"failed"_s);
    QCOMPARE(m_updater->errors(), QList<KRError>());
}

QTEST_GUILESS_MAIN(tst_ReportingUpdater)
#include "tst_reportingupdater.moc"
