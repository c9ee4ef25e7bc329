// The names of the lists of versions that do not work, and which list is in force.

#include "platform/QZHardwareInfo.h"
#include "state/Blocklist.h"
#include "state/KRPluginManagingState.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_Blocklist : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void namesOfThisMachine();
    void listInForce_data();
    void listInForce();
    void noFolderAtAll();
};

namespace {

QByteArray propertyList(const QByteArray &entries)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
}

QString textOf(const std::optional<IncompatibleVersions> &versions)
{
    if (!versions)
        return u"nil"_s;
    QStringList texts;
    for (auto entry = versions->begin(); entry != versions->end(); ++entry)
        texts.append(entry.key() + u' ' + entry.value());
    return texts.join(u", "_s);
}

} // namespace

void tst_Blocklist::names_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("processor");
    QTest::addColumn<QString>("shipped");
    QTest::addColumn<QString>("downloaded");
    QTest::addColumn<QString>("remote");

    QTest::newRow("64-bit x86") << u"95.3"_s << u"x86_64"_s << u"PluginsToDisable_x86_64"_s
                                << u"PluginsToDisable95.3_x86_64.json"_s << u"95.3_x86_64.json"_s;
    QTest::newRow("other machines") << u"95.3"_s << u""_s << u"PluginsToDisable"_s << u"PluginsToDisable95.3.json"_s
                                    << u"95.3.json"_s;
    QTest::newRow("version that looks like a path") << u"/../esc/95"_s << u""_s << u"PluginsToDisable"_s
                                                    << u"PluginsToDisable-..-esc-95.json"_s << u"/../esc/95.json"_s;
}

void tst_Blocklist::names()
{
    QFETCH(QString, version);
    QFETCH(QString, processor);
    const BlocklistTarget target{version, processor};
    QTEST(shippedBlocklistName(target), "shipped");
    QTEST(downloadedBlocklistName(target), "downloaded");
    QTEST(remoteBlocklistName(target), "remote");
}

void tst_Blocklist::namesOfThisMachine()
{
    TestEnvironment environment;
    environment.version = u"95.3"_s;
    const bool isIntel = QZHardwareInfo::CPUType() == QZHardwareInfo::intelName();
    const auto suffix = isIntel ? u"_"_s + QZHardwareInfo::intelName() : QString();
    QCOMPARE(KRPluginManagingState::pluginsToDisableFilename(), u"PluginsToDisable"_s + suffix);
    QCOMPARE(KRPluginManagingState::pluginsToDisableRemoteFilename(), u"PluginsToDisable95.3"_s + suffix + u".json"_s);
    QCOMPARE(KRPluginManagingState::existingDownloadededBlacklistURL(),
        QUrl::fromLocalFile(environment.path(u"support/PluginsToDisable95.3"_s + suffix + u".json"_s)));
}

void tst_Blocklist::listInForce_data()
{
    QTest::addColumn<QByteArray>("downloaded");
    QTest::addColumn<QByteArray>("shipped");
    QTest::addColumn<QString>("inForce");

    const auto shipped = propertyList("<key>s</key><string>1.0</string>");
    const auto row = [](const char *tag, const QByteArray &downloadedText, const QByteArray &shippedText,
                         const QString &inForce) { QTest::newRow(tag) << downloadedText << shippedText << inForce; };
    row("neither", {}, {}, u"nil"_s);
    row("shipped alone", {}, shipped, u"s 1.0"_s);
    row("downloaded alone", R"({"d": "2.0"})", {}, u"d 2.0"_s);
    row("downloaded before shipped", R"({"d": "2.0"})", shipped, u"d 2.0"_s);
    row("downloaded one is empty", "{}", shipped, u"s 1.0"_s);
    row("downloaded one is no JSON", "<html>", shipped, u"s 1.0"_s);
    row("downloaded one is cut off", R"({"d": "2.0")", shipped, u"s 1.0"_s);
    row("downloaded one is an array", R"(["d"])", shipped, u"s 1.0"_s);
    row("downloaded one is a property list", shipped, {}, u"nil"_s);
    row("entries that are no text", R"({"d": "2.0", "n": 2, "o": null, "a": []})", shipped, u"d 2.0"_s);
    row("shipped one is garbage", {}, "garbage", u"nil"_s);
    row("shipped one is empty", {}, propertyList({}), u""_s);
    row("shipped entries that are no text", {},
        propertyList("<key>s</key><string>1.0</string><key>n</key><integer>2</integer>"), u"s 1.0"_s);
}

void tst_Blocklist::listInForce()
{
    QFETCH(QByteArray, downloaded);
    QFETCH(QByteArray, shipped);
    TestEnvironment environment;
    if (!downloaded.isEmpty())
        writeFile(KRPluginManagingState::existingDownloadededBlacklistURL().toLocalFile(), downloaded);
    const auto shippedName = KRPluginManagingState::pluginsToDisableFilename() + u".plist"_s;
    if (!shipped.isEmpty())
        writeFile(environment.path(u"resources/"_s + shippedName), shipped);
    QTEST(textOf(KRPluginManagingState::incompatiblePlugins()), "inForce");
}

void tst_Blocklist::noFolderAtAll()
{
    struct Homeless final : LTAppEnvironment
    {
        QUrl applicationSupportFolder() const override { return {}; }
        QUrl mainBundleResourcesFolder() const override { return {}; }
    } environment;
    const LTAppEnvironment::Installation installation(environment);
    QVERIFY(KRPluginManagingState::existingDownloadededBlacklistURL().isEmpty());
    QVERIFY(!KRPluginManagingState::incompatiblePlugins());
}

QTEST_APPLESS_MAIN(tst_Blocklist)
#include "tst_blocklist.moc"
