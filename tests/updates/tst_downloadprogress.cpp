#include "updates/DownloadProgress.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Progress of two tasks, "1" and "2", of the plug-in "a" at the versions "1" and "2".
class tst_DownloadProgress : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void oneTaskOfKnownSize();
    void sumOfAllTasks();
    void sumIsUnknownUntilAllSizesAre();
    void endOfATaskTellsItsSize();
    void sizeThatIsNeverTold();

private:
    QList<PluginDownloadProgress> m_told;
    std::unique_ptr<DownloadProgress> m_progress;
};

void tst_DownloadProgress::init()
{
    m_told.clear();
    m_progress =
        std::make_unique<DownloadProgress>([this](const PluginDownloadProgress &progress) { m_told.append(progress); });
    m_progress->taskAdded(u"1"_s, u"a"_s, u"1"_s, QUrl(u"https://example.com/1"_s));
}

void tst_DownloadProgress::oneTaskOfKnownSize()
{
    m_progress->downloadTaskDidWriteData(u"1"_s, 3, 8);
    m_progress->downloadTaskDidWriteData(u"1"_s, 8, 8);
    const QUrl url(u"https://example.com/1"_s);
    QCOMPARE(m_told.size(), 2);
    QVERIFY(m_told[0] == (PluginDownloadProgress{u"a"_s, u"1"_s, url, 3, 8, 3, 8}));
    QVERIFY(m_told[1] == (PluginDownloadProgress{u"a"_s, u"1"_s, url, 8, 8, 8, 8}));
}

void tst_DownloadProgress::sumOfAllTasks()
{
    m_progress->taskAdded(u"2"_s, u"a"_s, u"2"_s, {});
    m_progress->downloadTaskDidWriteData(u"1"_s, 3, 8);
    m_progress->downloadTaskDidWriteData(u"2"_s, 4, 10);
    m_progress->downloadTaskDidWriteData(u"1"_s, 5, 8);
    QCOMPARE(m_told.last().version, u"1"_s);
    QCOMPARE(m_told.last().bytesReceived, 5);
    QCOMPARE(m_told.last().totalBytesReceived, 9);
    QCOMPARE(m_told.last().totalBytesExpected, 18);
}

void tst_DownloadProgress::sumIsUnknownUntilAllSizesAre()
{
    m_progress->taskAdded(u"2"_s, u"a"_s, u"2"_s, {});
    m_progress->downloadTaskDidWriteData(u"1"_s, 3, 8);
    QCOMPARE(m_told.last().bytesExpected, 8);
    QCOMPARE(m_told.last().totalBytesExpected, -1);
    m_progress->downloadTaskDidWriteData(u"2"_s, 1, 2);
    QCOMPARE(m_told.last().totalBytesExpected, 10);
}

void tst_DownloadProgress::endOfATaskTellsItsSize()
{
    m_progress->taskAdded(u"2"_s, u"a"_s, u"2"_s, {});
    m_progress->downloadTaskDidWriteData(u"2"_s, 4, -1);
    m_progress->downloadTaskDidEnd(u"2"_s); // it failed, or had no more
    m_progress->downloadTaskDidWriteData(u"1"_s, 3, 8);
    QCOMPARE(m_told.last().totalBytesReceived, 7);
    QCOMPARE(m_told.last().totalBytesExpected, 12);
}

void tst_DownloadProgress::sizeThatIsNeverTold()
{
    m_progress->downloadTaskDidWriteData(u"1"_s, 3, -1);
    QCOMPARE(m_told.last().bytesExpected, -1);
    QCOMPARE(m_told.last().totalBytesExpected, -1);
}

QTEST_GUILESS_MAIN(tst_DownloadProgress)
#include "tst_downloadprogress.moc"
