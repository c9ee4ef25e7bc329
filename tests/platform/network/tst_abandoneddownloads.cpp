#include "platform/network/AbandonedDownloads.h"
#include "support/BundleBuilder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_AbandonedDownloads : public QObject
{
    Q_OBJECT

private slots:
    void whatKilledProgramsHaveLeft();
    void oneLookPerFolder();
};

void tst_AbandonedDownloads::whatKilledProgramsHaveLeft()
{
    const QTemporaryDir folder;
    writeFile(folder.filePath(u"korvan-download-left"_s), "part");
    writeFile(folder.filePath(u"somebody-elses"_s), "text");
    QVERIFY(QDir().mkpath(folder.filePath(u"korvan-download-folder"_s)));
    QVERIFY(QFile::link(u"/etc/passwd"_s, folder.filePath(u"korvan-download-link"_s)));
    QFile used(folder.filePath(u"korvan-download-used"_s));
    QVERIFY(used.open(QIODevice::WriteOnly));
    markAsInUse(used.handle());
    removeAbandonedDownloads(folder.path());
    const QStringList left{
        u"korvan-download-folder"_s, u"korvan-download-link"_s, u"korvan-download-used"_s, u"somebody-elses"_s};
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name), left);
}

void tst_AbandonedDownloads::oneLookPerFolder()
{
    const QTemporaryDir folder;
    removeAbandonedDownloads(folder.path());
    writeFile(folder.filePath(u"korvan-download-later"_s), "part");
    removeAbandonedDownloads(folder.path());
    QVERIFY(QFile::exists(folder.filePath(u"korvan-download-later"_s)));
}

QTEST_GUILESS_MAIN(tst_AbandonedDownloads)
#include "tst_abandoneddownloads.moc"
