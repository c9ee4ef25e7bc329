// What a plain Qt program answers, and what it may answer instead.

#include "platform/FileURL.h"
#include "platform/KRImageData.h"
#include "platform/MainQueue.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QStandardPaths>
#include <QThread>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_LTAppEnvironment : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void installationsNest();
    void resources();
    void supportFolders();
    void environmentWithoutFolders();
    void systemLogLines();

    void queueKeepsItsOrder();
    void queueTakesWorkOfOtherThreads();
    void droppedCallsDoNotRun();
    void callsDoNotOutliveTheirOwnRun();

    void imageOfBytes();
    void imageOfPixels();
    void imageOfGarbage();
};

void tst_LTAppEnvironment::defaults()
{
    QStandardPaths::setTestModeEnabled(true);
    auto &environment = LTAppEnvironment::current();
    QCoreApplication::setApplicationVersion(u""_s);
    QCOMPARE(environment.bundleShortVersion(), u"1.0"_s);
    QCoreApplication::setApplicationVersion(u"98.3"_s);
    QCOMPARE(environment.bundleShortVersion(), u"98.3"_s);
    QVERIFY(!environment.applicationSupportFolder().isEmpty());
    QVERIFY(environment.imageNamed(u"plugin"_s).isNull());
    QCOMPARE(environment.logTarget(), nullptr);
    QCOMPARE(environment.alertPresenter(), nullptr);
    QCOMPARE(environment.scriptExceededTimeLimit(u"a"_s, 10), ScriptTimeLimitDecision::Stop);
#if defined(__x86_64__)
    QCOMPARE(environment.executableArchitecture(), 0x01000007u);
#elif defined(__aarch64__)
    QCOMPARE(environment.executableArchitecture(), 0x0100000Cu);
#endif
    QCOMPARE(&environment.userDefaults(), &environment.userDefaults());
}

void tst_LTAppEnvironment::installationsNest()
{
    auto *const plain = &LTAppEnvironment::current();
    {
        TestEnvironment outer;
        QCOMPARE(&LTAppEnvironment::current(), &outer);
        {
            TestEnvironment inner;
            QCOMPARE(&LTAppEnvironment::current(), &inner);
        }
        QCOMPARE(&LTAppEnvironment::current(), &outer);
    }
    QCOMPARE(&LTAppEnvironment::current(), plain);
}

void tst_LTAppEnvironment::resources()
{
    const TestEnvironment environment;
    const auto folder = pathFromFileURL(environment.mainBundleResourcesFolder());
    writeFile(QString::fromUtf8(folder) + u"/api/main ü.js"_s, "x");
    const auto found = environment.urlForResource(u"api/main ü"_s, u"js"_s);
    QCOMPARE(pathFromFileURL(found), folder + "/api/main ü.js");
    QVERIFY(environment.urlForResource(u"api/main"_s, u"js"_s).isEmpty());
    QVERIFY(environment.urlForResource(u"a\0b"_s, u"js"_s).isEmpty());
    writeFile(QString::fromUtf8(folder) + u"/set.bundle/a"_s, "x");
    QVERIFY(environment.urlForResource(u"set"_s, u"bundle"_s).toString().endsWith(u"set.bundle/"_s));
}

void tst_LTAppEnvironment::supportFolders()
{
    const TestEnvironment environment;
    using Creation = LTAppEnvironment::FolderCreation;
    const auto never = environment.applicationSupportDirectory(u"a/b"_s, Creation::Never);
    QVERIFY(never.toString().endsWith(u"/a/b/"_s));
    QVERIFY(!QFileInfo::exists(never.toLocalFile()));
    QCOMPARE(environment.applicationSupportDirectory(u"a/b"_s, Creation::IfNeeded), never);
    QVERIFY(QFileInfo(never.toLocalFile()).isDir());
    QCOMPARE(environment.applicationSupportDirectory(u"a/b"_s, Creation::IfNeeded), never);
    writeFile(never.toLocalFile() + u"file"_s, "");
    QVERIFY(!environment.applicationSupportDirectory(u"a/b/file/c"_s, Creation::IfNeeded).isEmpty());
}

void tst_LTAppEnvironment::environmentWithoutFolders()
{
    class Bare final : public LTAppEnvironment
    {
        QUrl mainBundleResourcesFolder() const override { return {}; }
        QUrl applicationSupportFolder() const override { return {}; }
    };
    const Bare environment;
    QVERIFY(environment.urlForResource(u"etc/passwd"_s, u""_s).isEmpty());
    QVERIFY(environment.applicationSupportDirectory(u"tmp"_s, LTAppEnvironment::FolderCreation::IfNeeded).isEmpty());
}

void tst_LTAppEnvironment::systemLogLines()
{
    QTest::ignoreMessage(QtInfoMsg, "100% of %s");
    LTAppEnvironment::current().systemLog(u"100% of %s"_s);
}

void tst_LTAppEnvironment::queueKeepsItsOrder()
{
    QtMainQueue queue;
    QEventLoop loop;
    QStringList ran;
    const auto late = queue.callAfter(2ms, [&] {
        ran.append(u"late"_s);
        loop.quit();
    });
    const auto early = queue.callAfter(1ms, [&] { ran.append(u"early"_s); });
    queue.async([&] { ran.append(u"first"_s); });
    queue.async([&] { ran.append(u"second"_s); });
    QCOMPARE(ran, QStringList()); // never inside the call
    loop.exec();
    QCOMPARE(ran, (QStringList{u"first"_s, u"second"_s, u"early"_s, u"late"_s}));
}

void tst_LTAppEnvironment::queueTakesWorkOfOtherThreads()
{
    QtMainQueue queue;
    QEventLoop loop;
    QThread *ranOn = nullptr;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        queue.async([&] {
            ranOn = QThread::currentThread();
            loop.quit();
        });
    }));
    thread->start();
    loop.exec();
    thread->wait();
    QCOMPARE(ranOn, QThread::currentThread());
}

void tst_LTAppEnvironment::droppedCallsDoNotRun()
{
    QtMainQueue queue;
    QEventLoop loop;
    bool ran = false;
    auto dropped = queue.callAfter(0ms, [&] { ran = true; });
    const auto end = queue.callAfter(1ms, [&] { loop.quit(); });
    dropped.reset();
    loop.exec();
    QVERIFY(!ran);
}

void tst_LTAppEnvironment::callsDoNotOutliveTheirOwnRun()
{
    QtMainQueue queue;
    QEventLoop loop;
    std::unique_ptr<ScheduledCall> call;
    const auto text = std::make_shared<QString>(u"held"_s);
    QString seen;
    call = queue.callAfter(0ms, [&, text] {
        call.reset();
        seen = *text;
        loop.quit();
    });
    loop.exec();
    QCOMPARE(seen, u"held"_s);
}

void tst_LTAppEnvironment::imageOfBytes()
{
    QImage picture(2, 3, QImage::Format_ARGB32);
    picture.fill(Qt::red);
    const KRImageData fromPixels(picture);
    const KRImageData data(fromPixels.data());
    QCOMPARE(data.image().size(), QSize(2, 3));
    QCOMPARE(data.sha(), QCryptographicHash::hash(data.data(), QCryptographicHash::Sha1));
    QCOMPARE(KRImageData(data.data(), "digest"_ba).sha(), "digest"_ba);
}

void tst_LTAppEnvironment::imageOfPixels()
{
    QImage picture(1, 1, QImage::Format_ARGB32);
    picture.fill(Qt::blue);
    const KRImageData data(picture);
    QVERIFY(data.data().startsWith("\x89PNG"));
    QCOMPARE(data.image(), picture);
    QCOMPARE(data.sha().size(), 20);
}

void tst_LTAppEnvironment::imageOfGarbage()
{
    QVERIFY(KRImageData("no image"_ba).image().isNull());
    QVERIFY(KRImageData(QByteArray()).image().isNull());
    QVERIFY(KRImageData(QImage()).data().isEmpty());
}

QTEST_GUILESS_MAIN(tst_LTAppEnvironment)
#include "tst_ltappenvironment.moc"
