// The vendor's list of versions that do not work, from a server that also answers wrongly.

#include "manager/KRPluginManager.h"
#include "platform/QZHardwareInfo.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"
#include "support/servers/LoopbackServer.h"

#include <QDir>
#include <QtTest>

#include <future>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRPluginManager_Blocklist : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void remotePath_data();
    void remotePath();
    void newListIsKeptAppliedAndCounted();
    void pluginsChangeWithTheNextReloadOnly();
    void sameListTwiceIsNothing();
    void listOfTheUsersDisabledPlugin();
    void whatChangesNothing_data();
    void whatChangesNothing();
    void whatIsNoListBringsTheShippedOne_data();
    void whatIsNoListBringsTheShippedOne();
    void redirectIsFollowed();
    void redirectsWithoutEnd();
    void plainHTTPToElsewhere();
    void withoutAStateStore();
    void folderThatIsMissing();
    void folderThatCannotBeWritten();
    void stateChangesMeanwhile();
    void managerEndsMeanwhile();
    void managerEndsInTheMiddleOfMany();
    void sameTexts_data();
    void sameTexts();

private:
    QString suffix() const
    {
        const bool isIntel = QZHardwareInfo::CPUType() == QZHardwareInfo::intelName();
        return isIntel ? u"_"_s + QZHardwareInfo::intelName() : QString();
    }
    QByteArray listPath() const { return "/blocklist/plugins/95.3" + suffix().toUtf8() + ".json"; }
    QString localCopy() const { return m_environment->path(u"support/PluginsToDisable95.3"_s + suffix() + u".json"_s); }
    void plugin(const QString &identifier)
    {
        BundleBuilder(m_environment->path(u"Plugins"_s), identifier)
            .manifest("{\"identifier\": \"" + identifier.toUtf8() + "\", \"version\": \"1.0\"}");
    }
    BlocklistUpdate update()
    {
        const auto arrived = std::make_shared<std::promise<BlocklistUpdate>>();
        auto future = arrived->get_future();
        m_manager->downloadRemotePluginsBlocklist(
            [arrived](const BlocklistUpdate &result) { arrived->set_value(result); });
        if (future.wait_for(60s) != std::future_status::ready)
            qFatal("no download came to its end");
        return future.get();
    }
    QByteArray kept() const
    {
        QFile file(localCopy());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "nothing";
    }
    bool isEnabled(const QString &identifier) { return m_manager->plugins().value(identifier)->isEnabled(); }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::shared_ptr<KRPluginManagingState> m_state;
    std::unique_ptr<KRPluginManager> m_manager;
};

void tst_KRPluginManager_Blocklist::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_environment->version = u"95.3"_s;
    m_server = std::make_unique<LoopbackServer>();
    m_environment->endpoint = u"http://127.0.0.1:%1"_s.arg(m_server->port());
    QVERIFY(QDir().mkpath(m_environment->path(u"support"_s)));
    plugin(u"a"_s);
    plugin(u"b"_s);
    m_state = std::make_shared<KRPluginManagingState>(QUrl::fromLocalFile(m_environment->path(u"state.plist"_s)));
    m_manager = std::make_unique<KRPluginManager>(
        QList<QUrl>{QUrl::fromLocalFile(m_environment->path(u"Plugins/"_s))}, nullptr, m_state);
    m_manager->reloadPlugins();
}

void tst_KRPluginManager_Blocklist::cleanup()
{
    m_manager.reset();
    m_state.reset();
    m_server.reset();
    m_environment.reset();
}

void tst_KRPluginManager_Blocklist::remotePath_data()
{
    QTest::addColumn<QString>("endpoint");
    QTest::addColumn<QString>("url");

    const auto file = u"/blocklist/plugins/95.3"_s + suffix() + u".json"_s;
    QTest::newRow("host") << u"https://plugins.example.com"_s << u"https://plugins.example.com"_s + file;
    QTest::newRow("slash at the end") << u"https://plugins.example.com/"_s << u"https://plugins.example.com"_s + file;
    QTest::newRow("port") << u"https://127.0.0.1:8443"_s << u"https://127.0.0.1:8443"_s + file;
}

void tst_KRPluginManager_Blocklist::remotePath()
{
    QFETCH(QString, endpoint);
    m_environment->endpoint = endpoint;
    QTEST(m_manager->pluginsDisabledListRemotePath(), "url");
}

void tst_KRPluginManager_Blocklist::newListIsKeptAppliedAndCounted()
{
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0", "c": "2.0"})"));
    const auto result = update();
    QVERIFY(result.hasNewList);
    QCOMPARE(result.newlyDisabled, 1U);
    QCOMPARE(kept(), R"({"a": "1.0", "c": "2.0"})");
    QCOMPARE(m_state->incompatiblePluginVersions(),
        std::optional(IncompatibleVersions{{u"a"_s, u"1.0"_s}, {u"c"_s, u"2.0"_s}}));
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 1);
    QCOMPARE(m_state->metadataValueForKey(u"PluginIncompatibleRegistered"_s, u"a"_s), QVariant(u"1.0"_s));
    QCOMPARE(m_server->requestedPaths(), QList<QByteArray>{listPath()});
}

void tst_KRPluginManager_Blocklist::pluginsChangeWithTheNextReloadOnly()
{
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0"})"));
    update();
    QVERIFY(isEnabled(u"a"_s));
    m_manager->reloadPlugins();
    QVERIFY(!isEnabled(u"a"_s));
    QVERIFY(isEnabled(u"b"_s));
}

void tst_KRPluginManager_Blocklist::sameListTwiceIsNothing()
{
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0"})"));
    update();
    m_manager->setNumberOfIncompatiblePluginsDisabled(0);
    m_state->setIncompatiblePluginVersions(std::nullopt); // to be seen if anything were done
    const auto result = update();
    QVERIFY(!result.hasNewList);
    QCOMPARE(result.newlyDisabled, 0U);
    QVERIFY(!m_state->incompatiblePluginVersions());
    QCOMPARE(m_server->requestedPaths().size(), 2);
}

void tst_KRPluginManager_Blocklist::listOfTheUsersDisabledPlugin()
{
    m_manager->disablePlugin(m_manager->plugins().value(u"a"_s));
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0"})"));
    const auto result = update();
    QVERIFY(result.hasNewList);
    QCOMPARE(result.newlyDisabled, 0U);
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 0);
}

void tst_KRPluginManager_Blocklist::whatChangesNothing_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("status");

    const auto http = [](const QByteArray &head, const QByteArray &body) {
        return "HTTP/1.1 " + head + "\r\nContent-Length: 20\r\n\r\n" + body;
    };
    QTest::newRow("not found") << QByteArray("<html>no</html>") << 404;
    QTest::newRow("server fails") << QByteArray(R"({"a": "1.0"})") << 500;
    QTest::newRow("half a body") << http("200 OK", R"({"a": )") << 0;
    QTest::newRow("no HTTP") << QByteArray("220 mail.example.com ready\r\n") << 0;
    QTest::newRow("nothing at all") << QByteArray() << 0;
    QTest::newRow("too large") << QByteArray(11 * 1024 * 1024, ' ') << 200;
}

void tst_KRPluginManager_Blocklist::whatChangesNothing()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, status);
    writeFile(localCopy(), R"({"b": "1.0"})");
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"b"_s, u"1.0"_s}});
    m_server->setAnswer(listPath(), status == 0 ? Answer::bytes(answer) : Answer::response(status, answer));
    const auto result = update();
    QVERIFY(!result.hasNewList);
    QCOMPARE(kept(), R"({"b": "1.0"})");
    QCOMPARE(m_state->incompatiblePluginVersions(), std::optional(IncompatibleVersions{{u"b"_s, u"1.0"_s}}));
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 0);
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Blocklist::whatIsNoListBringsTheShippedOne_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("garbage") << QByteArray("<html>");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("no text") << QByteArray();
}

void tst_KRPluginManager_Blocklist::whatIsNoListBringsTheShippedOne()
{
    QFETCH(QByteArray, body);
    writeFile(m_environment->path(u"resources/PluginsToDisable"_s + suffix() + u".plist"_s),
        "<plist version=\"1.0\"><dict><key>b</key><string>1.0</string></dict></plist>");
    m_server->setAnswer(listPath(), Answer::response(200, body));
    const auto result = update();
    QVERIFY(result.hasNewList);
    QCOMPARE(result.newlyDisabled, 1U);
    QCOMPARE(kept(), body);
    QCOMPARE(m_state->incompatiblePluginVersions(), std::optional(IncompatibleVersions{{u"b"_s, u"1.0"_s}}));
}

void tst_KRPluginManager_Blocklist::redirectIsFollowed()
{
    m_server->setAnswer(listPath(), Answer::redirect("/elsewhere"));
    m_server->setAnswer("/elsewhere", Answer::response(200, R"({"a": "1.0"})"));
    QVERIFY(update().hasNewList);
}

void tst_KRPluginManager_Blocklist::redirectsWithoutEnd()
{
    m_server->setAnswer(listPath(), Answer::redirect(listPath()));
    QVERIFY(!update().hasNewList);
    QCOMPARE(kept(), "nothing");
}

void tst_KRPluginManager_Blocklist::plainHTTPToElsewhere()
{
    m_environment->endpoint = u"http://example.com"_s;
    QVERIFY(!update().hasNewList);
}

void tst_KRPluginManager_Blocklist::withoutAStateStore()
{
    m_manager = std::make_unique<KRPluginManager>();
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0"})"));
    const auto result = update();
    QVERIFY(result.hasNewList);
    QCOMPARE(result.newlyDisabled, 0U);
    QCOMPARE(kept(), R"({"a": "1.0"})");
}

void tst_KRPluginManager_Blocklist::folderThatIsMissing()
{
    QVERIFY(QDir(m_environment->path(u"support"_s)).removeRecursively());
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0"})"));
    QVERIFY(update().hasNewList);
    QCOMPARE(kept(), R"({"a": "1.0"})");
}

void tst_KRPluginManager_Blocklist::folderThatCannotBeWritten()
{
    QVERIFY(QDir(m_environment->path(u"support"_s)).removeRecursively());
    writeFile(m_environment->path(u"support"_s), "a file in its place");
    m_server->setAnswer(listPath(), Answer::response(200, R"({"a": "1.0"})"));
    QVERIFY(!update().hasNewList);
    QVERIFY(!m_state->incompatiblePluginVersions()); // what cannot be kept is not in force
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 0);
}

void tst_KRPluginManager_Blocklist::stateChangesMeanwhile()
{
    // Both threads change and read the state at the same time; each list differs from the one before.
    QList<Answer> answers;
    for (int number = 0; number < 50; ++number)
        answers.append(Answer::response(200, "{\"a\": \"1." + QByteArray::number(number) + "\"}"));
    m_server->setAnswers(listPath(), answers);
    std::atomic<int> finished = 0;
    for (int number = 0; number < 50; ++number)
        m_manager->downloadRemotePluginsBlocklist([&finished](const BlocklistUpdate &) { ++finished; });
    while (finished < 50) {
        m_manager->disablePlugin(m_manager->plugins().value(u"b"_s));
        QVERIFY(m_state->metadata());
        m_manager->enablePlugin(m_manager->plugins().value(u"b"_s));
        m_manager->setNumberOfIncompatiblePluginsDisabled(0);
        QVERIFY(m_manager->incompatiblePlugins().size() <= 1);
    }
    QCOMPARE(m_manager->incompatiblePlugins(), QStringList{u"a"_s});
}

void tst_KRPluginManager_Blocklist::managerEndsMeanwhile()
{
    m_server->setAnswer(listPath(), Answer::silence());
    bool isCalled = false;
    m_manager->downloadRemotePluginsBlocklist([&isCalled](const BlocklistUpdate &) { isCalled = true; });
    m_server->waitForRequests(1);
    m_manager.reset();
    QVERIFY(isCalled); // given up, before the manager has ended
    m_server->waitForHangUps(1);
    QCOMPARE(kept(), "nothing");
}

void tst_KRPluginManager_Blocklist::managerEndsInTheMiddleOfMany()
{
    QList<Answer> answers;
    for (int number = 0; number < 20; ++number)
        answers.append(Answer::response(200, "{\"a\": \"1." + QByteArray::number(number) + "\"}"));
    m_server->setAnswers(listPath(), answers);
    for (int number = 0; number < 20; ++number)
        m_manager->downloadRemotePluginsBlocklist();
    m_server->waitForRequests(3);
    m_manager.reset();
    m_environment->userDefaults().setValue(u"KRPluginManagerNumberOfIncompatiblePluginsDisabled"_s, 77);
    QCOMPARE(m_environment->userDefaults().integerForKey(u"KRPluginManagerNumberOfIncompatiblePluginsDisabled"_s), 77);
}

void tst_KRPluginManager_Blocklist::sameTexts_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("same");

    const QByteArray utf16("\xFF\xFE{\0}\0", 6);
    QTest::newRow("equal") << QByteArray("{\"a\": 1}") << QByteArray("{\"a\": 1}") << true;
    QTest::newRow("different") << QByteArray("{\"a\": 1}") << QByteArray("{\"a\": 2}") << false;
    QTest::newRow("white space counts") << QByteArray("{}") << QByteArray("{}\n") << false;
    QTest::newRow("both empty") << QByteArray("") << QByteArray("") << true;
    QTest::newRow("neither can be read") << QByteArray() << QByteArray() << true;
    QTest::newRow("only the first can be read") << QByteArray("") << QByteArray() << false;
    QTest::newRow("only the second can be read") << QByteArray() << QByteArray("") << false;
    QTest::newRow("other encoding, same text") << utf16 << QByteArray("{}") << true;
    QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF{}") << QByteArray("{}") << true;
    QTest::newRow("not UTF-8") << QByteArray("\xFC") << QByteArray("\xC3\xBC") << true;
    QTest::newRow("zeros inside") << QByteArray("a\0b", 3) << QByteArray("a\0c", 3) << false;
}

void tst_KRPluginManager_Blocklist::sameTexts()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    const auto write = [this](const QString &name, const QByteArray &content) {
        const auto file = m_environment->path(name);
        if (!content.isNull())
            writeFile(file, content);
        return QUrl::fromLocalFile(file);
    };
    QTEST(m_manager->contentsSameForSmallTextFiles(write(u"1"_s, first), write(u"2"_s, second)), "same");
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Blocklist)
#include "tst_krpluginmanager_blocklist.moc"
