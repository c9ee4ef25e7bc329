#include "widgets/plugins/PluginFileInstaller.h"

#include "PluginsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using Kind = PluginInstallOutcome::Kind;
using Choice = PluginFileInstaller::Answer;

class tst_PluginFileInstaller : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void archive();
    void bundle();
    void bundleWithLinksInside();
    void archiveWithAFolderAround();
    void refusals_data();
    void refusals();
    void nothingEscapes_data();
    void nothingEscapes();
    void replacing_data();
    void replacing();
    void answerThatComesLater();
    void answerThatNeverComes();
    void nobodyToAsk();
    void whatIsReplacedIsKept();
    void failureLosesNothing();
    void installedOneItself();
    void severalAtOnce();
    void namesWithoutMeaning_data();
    void namesWithoutMeaning();
    void managerGoesFirst();

private:
    PluginInstallOutcome installFile(const QString &path);
    /// What staging has left behind.
    QStringList leftovers() const
    {
        return QDir(m_environment->path(u"support/PluginStaging"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<PluginFileInstaller> m_installer;
    QList<PluginReplacement> m_questions;
    QList<PluginInstallOutcome> m_outcomes;
    std::optional<Choice> m_answer;
    std::function<void(Choice)> m_pendingAnswer;
};

void tst_PluginFileInstaller::init()
{
    setUp();
    m_questions.clear();
    m_outcomes.clear();
    m_answer = Choice::Replace;
    const auto question = [this](const PluginReplacement &replacement, std::function<void(Choice)> answer) {
        m_questions.append(replacement);
        if (m_answer)
            answer(*m_answer);
        else
            m_pendingAnswer = std::move(answer);
    };
    m_installer = std::make_unique<PluginFileInstaller>(*m_manager, question);
    connect(m_installer.get(), &PluginFileInstaller::finished, this,
        [this](const PluginInstallOutcome &outcome) { m_outcomes.append(outcome); });
}

void tst_PluginFileInstaller::cleanup()
{
    m_pendingAnswer = nullptr;
    m_installer.reset();
    QThreadPool::globalInstance()->waitForDone();
    QCOMPARE(leftovers(), QStringList());
    tearDown();
}

PluginInstallOutcome tst_PluginFileInstaller::installFile(const QString &path)
{
    m_outcomes.clear();
    m_installer->install(path);
    waitUntil([this] { return !m_outcomes.isEmpty(); });
    return m_outcomes.first();
}

void tst_PluginFileInstaller::archive()
{
    const auto path = archiveFile({u"com.example.tidy"_s, u"Tidy"_s});
    const auto outcome = installFile(path);
    QCOMPARE(outcome.kind, Kind::Installed);
    QCOMPARE(outcome.message, QString());
    QCOMPARE(outcome.identifier, u"com.example.tidy"_s);
    QCOMPARE(outcome.name, u"Tidy"_s);
    QCOMPARE(outcome.path, path);
    QCOMPARE(installedVersion(u"com.example.tidy"_s), u"1.0"_s);
    QCOMPARE(installedFolders(), QStringList{u"com.example.tidy.korvanplugin"_s});
    QVERIFY(m_manager->plugins().value(u"com.example.tidy"_s)->isEnabled());
    QVERIFY(QFile::exists(path));
    QCOMPARE(m_questions.size(), 0);
}

void tst_PluginFileInstaller::bundle()
{
    const auto built = writePlugin(m_environment->path(u"downloads"_s), {u"com.example.tidy"_s, u"Tidy"_s});
    const auto outcome = installFile(built.path() + u'/');
    QCOMPARE(outcome.kind, Kind::Installed);
    QCOMPARE(installedVersion(u"com.example.tidy"_s), u"1.0"_s);
    QVERIFY(QFile::exists(built.path() + u"/Contents/Korvan/manifest.json"_s)); // it was a copy
}

void tst_PluginFileInstaller::bundleWithLinksInside()
{
    const auto built = writePlugin(m_environment->path(u"downloads"_s), {u"a"_s, u"a"_s});
    QVERIFY(QFile::link(u"script.js"_s, built.path() + u"/Contents/Korvan/same.js"_s));
    QCOMPARE(installFile(built.path()).kind, Kind::Installed);
    const auto scripts = pluginsFolder() + u"/a.korvanplugin/Contents/Korvan/"_s;
    QCOMPARE(QFile::symLinkTarget(scripts + u"same.js"_s), scripts + u"script.js"_s);
}

void tst_PluginFileInstaller::archiveWithAFolderAround()
{
    const auto manifest = manifestOf({u"a"_s, u"a"_s});
    const ZipBuilder zip(
        {{"around/ReadMe.txt", "hello"}, {"around/a.korvanplugin/Contents/Korvan/manifest.json", manifest}});
    QCOMPARE(installFile(file(u"a.zip"_s, zip.bytes())).kind, Kind::Installed);
    QCOMPARE(installedFolders(), QStringList{u"a.korvanplugin"_s});
}

void tst_PluginFileInstaller::refusals_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");

    const QByteArray manifest = "a.korvanplugin/Contents/Korvan/manifest.json";
    QTest::newRow("no archive") << u"a.zip"_s << QByteArray("no archive")
                                << u"“a.zip” is no archive, is empty or cannot be read."_s;
    QTest::newRow("empty archive") << u"a.zip"_s << ZipBuilder().bytes()
                                   << u"“a.zip” is no archive, is empty or cannot be read."_s;
    QTest::newRow("archive of something else")
        << u"a.zip"_s << ZipBuilder().add({"a.txt", "a"}).bytes() << u"There is no plug-in in “a.zip”."_s;
    QTest::newRow("manifest that is no JSON") << u"a.zip"_s << ZipBuilder().add({manifest, "{"}).bytes()
                                              << u"The manifest of “a.zip” is missing or cannot be read."_s;
    QTest::newRow("no manifest") << u"a.zip"_s << ZipBuilder().add({"a.korvanplugin/x", "x"}).bytes()
                                 << u"The manifest of “a.zip” is missing or cannot be read."_s;
    QTest::newRow("no identifier") << u"a.zip"_s << ZipBuilder().add({manifest, "{\"name\": \"a\"}"}).bytes()
                                   << u"The manifest of “a.zip” names no identifier."_s;
    QTest::newRow("another kind of file")
        << u"a.txt"_s << QByteArray("a") << u"“a.txt” is neither a plug-in nor a zip archive of one."_s;
    QTest::newRow("a name that turns the reading direction")
        << u"a\u202etxt.x"_s << QByteArray("a") << u"“atxt.x” is neither a plug-in nor a zip archive of one."_s;
}

void tst_PluginFileInstaller::refusals()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const auto outcome = installFile(file(name, content));
    QCOMPARE(outcome.kind, Kind::Failed);
    QTEST(outcome.message, "message");
    QCOMPARE(installedFolders(), QStringList());
}

void tst_PluginFileInstaller::nothingEscapes_data()
{
    QTest::addColumn<QByteArray>("archive");

    const auto manifest = manifestOf({u"a"_s, u"a"_s});
    const QByteArray folder = "a.korvanplugin/Contents/Korvan/";
    const auto with = [&](const ZipPart &part) {
        return ZipBuilder({{folder + "manifest.json", manifest}, part}).bytes();
    };
    QTest::newRow("a path upwards") << with({"../../../outside", "x"});
    QTest::newRow("a link outside") << with({folder + "link.js", "/etc/passwd", ZipPart::link});
    QTest::newRow("a link upwards") << with({folder + "link", "../../../..", ZipPart::link});
    QTest::newRow("a link to nowhere") << with({folder + "link", "nowhere", ZipPart::link});
    QTest::newRow("a link in the plug-in's place")
        << ZipBuilder({{"b/Contents/Korvan/manifest.json", manifest}, {"a.korvanplugin", "b", ZipPart::link}}).bytes();
}

void tst_PluginFileInstaller::nothingEscapes()
{
    QFETCH(QByteArray, archive);
    const auto outcome = installFile(file(u"a.zip"_s, archive));
    QCOMPARE(outcome.kind, Kind::Failed);
    QVERIFY(!outcome.message.isEmpty());
    QCOMPARE(installedFolders(), QStringList());
    QVERIFY(!QFile::exists(m_environment->path(u"outside"_s)));
    QVERIFY(!QFile::exists(m_environment->path(u"support/outside"_s)));
}

void tst_PluginFileInstaller::replacing_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<PluginReplacement::Kind>("kind");
    QTest::addColumn<Choice>("answer");
    QTest::addColumn<Kind>("outcome");
    QTest::addColumn<QString>("installed");

    using Replacement = PluginReplacement::Kind;
    QTest::newRow("newer, replace") << u"1.5"_s << Replacement::Newer << Choice::Replace << Kind::Installed << u"1.5"_s;
    QTest::newRow("newer, keep") << u"1.5"_s << Replacement::Newer << Choice::Keep << Kind::Declined << u"1.4"_s;
    QTest::newRow("same, replace") << u"1.4.0"_s << Replacement::Same << Choice::Replace << Kind::Installed
                                   << u"1.4.0"_s;
    QTest::newRow("same, keep") << u"1.4.0"_s << Replacement::Same << Choice::Keep << Kind::Declined << u"1.4"_s;
    QTest::newRow("older, replace") << u"1.3"_s << Replacement::Older << Choice::Replace << Kind::Installed << u"1.3"_s;
    QTest::newRow("older, keep") << u"1.3"_s << Replacement::Older << Choice::Keep << Kind::Declined << u"1.4"_s;
}

void tst_PluginFileInstaller::replacing()
{
    QFETCH(QString, version);
    QFETCH(Choice, answer);
    install({u"a"_s, u"Tidy"_s, u"1.4"_s});
    m_answer = answer;
    const auto outcome = installFile(archiveFile({u"a"_s, u"Tidy Two"_s, version}));
    QTEST(outcome.kind, "outcome");
    QCOMPARE(m_questions.size(), 1);
    QTEST(m_questions.first().kind, "kind");
    QCOMPARE(m_questions.first().name, u"Tidy Two"_s);
    QCOMPARE(m_questions.first().installedVersion, u"1.4"_s);
    QCOMPARE(m_questions.first().newVersion, version);
    QTEST(installedVersion(u"a"_s).value_or(QString()), "installed");
    QCOMPARE(installedFolders(), QStringList{u"a.korvanplugin"_s});
}

void tst_PluginFileInstaller::answerThatComesLater()
{
    install({u"a"_s, u"a"_s});
    m_answer.reset();
    m_installer->install(archiveFile({u"a"_s, u"a"_s, u"2.0"_s}));
    waitUntil([this] { return m_pendingAnswer != nullptr; });
    QCOMPARE(m_outcomes.size(), 0);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
    std::exchange(m_pendingAnswer, nullptr)(Choice::Replace);
    QCOMPARE(m_outcomes.size(), 1);
    QCOMPARE(installedVersion(u"a"_s), u"2.0"_s);
}

void tst_PluginFileInstaller::answerThatNeverComes()
{
    install({u"a"_s, u"a"_s});
    m_answer.reset();
    m_installer->install(archiveFile({u"a"_s, u"a"_s, u"2.0"_s}));
    waitUntil([this] { return m_pendingAnswer != nullptr; });
    QCOMPARE(leftovers().size(), 1);
    m_pendingAnswer = nullptr;
    QCOMPARE(leftovers(), QStringList());
    QCOMPARE(m_outcomes.size(), 0);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginFileInstaller::nobodyToAsk()
{
    install({u"a"_s, u"a"_s});
    PluginFileInstaller installer(*m_manager, nullptr);
    QList<Kind> kinds;
    connect(&installer, &PluginFileInstaller::finished, this,
        [&kinds](const PluginInstallOutcome &outcome) { kinds.append(outcome.kind); });
    installer.install(archiveFile({u"a"_s, u"a"_s, u"2.0"_s}));
    waitUntil([&] { return !kinds.isEmpty(); });
    QCOMPARE(kinds, QList<Kind>{Kind::Declined});
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginFileInstaller::whatIsReplacedIsKept()
{
    install({u"a"_s, u"a"_s});
    installFile(archiveFile({u"a"_s, u"a"_s, u"2.0"_s}));
    QVERIFY(!m_manager->downloadedPluginURLWithIdentifier(u"a"_s, u"1.0"_s).isEmpty());
    installFile(archiveFile({u"a"_s, u"a"_s, u"1.0"_s}));
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

/// Something else has the name that the new one comes with.
void tst_PluginFileInstaller::failureLosesNothing()
{
    install({u"a"_s, u"a"_s});
    const auto old = m_manager->plugins().value(u"a"_s);
    writeFile(pluginsFolder() + u"/b.korvanplugin"_s, "a file in the way");
    const auto zip =
        ZipBuilder().add({"b.korvanplugin/Contents/Korvan/manifest.json", manifestOf({u"a"_s, u"a"_s, u"2.0"_s})});
    const auto outcome = installFile(file(u"b.zip"_s, zip.bytes()));
    QCOMPARE(outcome.kind, Kind::Failed);
    QVERIFY(!outcome.message.isEmpty());
    m_manager->reloadPlugins();
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
    QCOMPARE(m_manager->plugins().value(u"a"_s)->url(), old->url());
    QCOMPARE(installedFolders(), QStringList({u"a.korvanplugin"_s, u"b.korvanplugin"_s}));
}

void tst_PluginFileInstaller::installedOneItself()
{
    install({u"a"_s, u"a"_s});
    const auto outcome = installFile(pluginsFolder() + u"/a.korvanplugin/"_s);
    QCOMPARE(outcome.kind, Kind::Failed);
    QCOMPARE(outcome.message, u"“a.korvanplugin” is installed already."_s);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginFileInstaller::severalAtOnce()
{
    for (const auto &identifier : {u"a"_s, u"b"_s, u"c"_s})
        m_installer->install(archiveFile({identifier, identifier}));
    waitUntil([this] { return m_outcomes.size() == 3; });
    QCOMPARE(m_manager->plugins().keys(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
}

void tst_PluginFileInstaller::namesWithoutMeaning_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("message");

    QTest::newRow("nothing there") << u"/nowhere/a.zip"_s << u"There is no file “a.zip”."_s;
    QTest::newRow("a plug-in that is not there")
        << u"/nowhere/a.korvanplugin"_s << u"There is no file “a.korvanplugin”."_s;
    QTest::newRow("a folder") << u"/tmp"_s << u"“tmp” is neither a plug-in nor a zip archive of one."_s;
}

void tst_PluginFileInstaller::namesWithoutMeaning()
{
    QFETCH(QString, path);
    const auto outcome = installFile(path);
    QCOMPARE(outcome.kind, Kind::Failed);
    QTEST(outcome.message, "message");
}

void tst_PluginFileInstaller::managerGoesFirst()
{
    m_installer->install(archiveFile({u"a"_s, u"a"_s}));
    m_manager.reset();
    QThreadPool::globalInstance()->waitForDone();
    m_environment->queue.runQueued();
    m_installer->install(u"/nowhere/a.zip"_s);
    QCOMPARE(m_outcomes.size(), 0);
    QCOMPARE(installedFolders(), QStringList());
}

QTEST_MAIN(tst_PluginFileInstaller)
#include "tst_pluginfileinstaller.moc"
