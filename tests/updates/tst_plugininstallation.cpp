// New bundles into the place of old ones: the steps, what is said when one fails, and that nothing is lost.

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "support/BundleBuilder.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"
#include "updates/PluginInstallation.h"
#include "updates/PluginWarehouse.h"

#include <QtTest>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const auto tidy = u"com.example.tidy"_s;

/// A bundle whose one file tells which one it is.
void makeBundleAt(const QByteArray &path, const QByteArray &content)
{
    writeFileAt(path + "/Contents/Korvan/tidy.js", content);
}

QByteArray contentOf(const QByteArray &bundle)
{
    const auto text = readFile(bundle + "/Contents/Korvan/tidy.js", 1000);
    return text ? text.value() : "nothing"_ba;
}

QUrl bundleURL(const QByteArray &path)
{
    return fileURLFromPath(path, FileKind::Folder);
}

/// A person of whom one trash is known.
struct Machine
{
    Machine() { qputenv("XDG_DATA_HOME", (support() + "/data").constData()); }
    ~Machine() { qunsetenv("XDG_DATA_HOME"); }
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;

    QByteArray support() const { return pathFromFileURL(environment.applicationSupportFolder()); }
    QByteArray plugins(const QByteArray &name) const { return support() + "/Plugins/" + name; }
    QByteArray warehouse(const QByteArray &name) const { return support() + "/PluginsWarehouse/" + name; }
    QByteArray trash(const QByteArray &name) const { return support() + "/data/Trash/files/" + name; }

    /// A file stands where the trash would be made.
    void forbidTrash() const { writeFileAt(support() + "/data", "no folder"); }

    bool install(const QByteArray &newBundle, const std::optional<InstalledPlugin> &installed)
    {
        error = {u"untouched"_s, 1, {}};
        return installPlugin(bundleURL(newBundle), identifier, installed, bundleURL(support() + "/Plugins"), &error);
    }
    InstalledPlugin installed(const QByteArray &name, const std::optional<QString> &version) const
    {
        return {bundleURL(plugins(name)), version};
    }

    TestEnvironment environment;
    QString identifier = tidy;
    KRError error;
};

} // namespace

class tst_PluginInstallation : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_machine = std::make_unique<Machine>();
        makeFolderAt(m_machine->support() + "/Plugins");
    }
    void cleanup() { m_machine.reset(); }

    void notInstalledYet();
    void update();
    void updateLandsWhereTheOldOneWas();
    void updateUnderAnotherName();
    void parkedAlready();
    void withoutVersion_data();
    void withoutVersion();
    void installedOneIsGone();
    void bothStayWhenOneCannotBeMovedAside();
    void cannotBeMovedAsideNorReplaced();
    void backupFolderCannotBeMade();
    void backupFolderCannotBeMadeAndNothingInstalled();
    void newBundleIsMissing_data();
    void newBundleIsMissing();
    void somethingIsInTheWay();
    void installedOneIsTheNewOne();
    void refused_data();
    void refused();
    void errorIsNotAskedFor();
    void newer_data();
    void newer();

private:
    std::unique_ptr<Machine> m_machine;
};

void tst_PluginInstallation::notInstalledYet()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), "new");
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), std::nullopt));
    QCOMPARE(machine.error, KRError());
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "new"_ba);
    QVERIFY(downloadedPluginURL(tidy, u"2.0"_s).isEmpty());
    QVERIFY(machine.environment.systemLogLines.isEmpty());
}

void tst_PluginInstallation::update()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), "new");
    const auto installed = machine.installed("tidy.korvanplugin", u"1.0"_s);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), installed));
    QCOMPARE(machine.error, KRError());
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "new"_ba);
    QCOMPARE(contentOf(machine.warehouse("com.example.tidy/1.0/tidy.korvanplugin")), "old"_ba);
    QVERIFY(downloadedPluginURL(tidy, u"2.0"_s).isEmpty());
    QVERIFY(machine.environment.systemLogLines.isEmpty());
    QVERIFY(!itemExists(machine.support() + "/data"));
}

void tst_PluginInstallation::updateLandsWhereTheOldOneWas()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("team/tools/tidy.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), "new");
    const auto installed = machine.installed("team/tools/tidy.korvanplugin", u"1.0"_s);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), installed));
    QCOMPARE(contentOf(machine.plugins("team/tools/tidy.korvanplugin")), "new"_ba);
    QVERIFY(!itemExists(machine.plugins("tidy.korvanplugin")));
}

void tst_PluginInstallation::updateUnderAnotherName()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("old.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/new.korvanplugin"), "new");
    const auto installed = machine.installed("old.korvanplugin", u"1.0"_s);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/new.korvanplugin"), installed));
    QCOMPARE(contentOf(machine.plugins("new.korvanplugin")), "new"_ba);
    QCOMPARE(contentOf(machine.warehouse("com.example.tidy/1.0/old.korvanplugin")), "old"_ba);
    QVERIFY(!itemExists(machine.plugins("old.korvanplugin")));
}

void tst_PluginInstallation::parkedAlready()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/1.0/tidy.korvanplugin"), "parked");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), "new");
    const auto installed = machine.installed("tidy.korvanplugin", u"1.0"_s);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), installed));
    QCOMPARE(machine.error, KRError());
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "new"_ba);
    QCOMPARE(contentOf(machine.warehouse("com.example.tidy/1.0/tidy.korvanplugin")), "parked"_ba);
    QCOMPARE(contentOf(machine.trash("tidy.korvanplugin")), "old"_ba);
    QVERIFY(machine.environment.systemLogLines.isEmpty());
}

void tst_PluginInstallation::withoutVersion_data()
{
    QTest::addColumn<std::optional<QString>>("version");
    QTest::newRow("nil") << std::optional<QString>();
    QTest::newRow("empty") << std::optional<QString>(QString());
}

void tst_PluginInstallation::withoutVersion()
{
    QFETCH(std::optional<QString>, version);
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), "new");
    const auto installed = machine.installed("tidy.korvanplugin", version);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), installed));
    QCOMPARE(machine.error, KRError());
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "new"_ba);
    QCOMPARE(contentOf(machine.trash("tidy.korvanplugin")), "old"_ba);
    QVERIFY(!itemExists(machine.warehouse("com.example.tidy/tidy.korvanplugin")));
}

void tst_PluginInstallation::installedOneIsGone()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), "new");
    const auto installed = machine.installed("tidy.korvanplugin", u"1.0"_s);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin"), installed));
    QCOMPARE(machine.error, KRError());
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "new"_ba);
    QCOMPARE(machine.environment.systemLogLines,
        QStringList{u"Failure to move the plugin with error No such file or directory."_s});
}

void tst_PluginInstallation::bothStayWhenOneCannotBeMovedAside()
{
    // A file stands where the parked copy would go: to the trash then, which cannot be made either.
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("old.korvanplugin"), "old");
    writeFileAt(machine.warehouse("com.example.tidy/1.0/old.korvanplugin"), "in the way");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/new.korvanplugin"), "new");
    machine.forbidTrash();
    const auto installed = machine.installed("old.korvanplugin", u"1.0"_s);
    QVERIFY(machine.install(machine.warehouse("com.example.tidy/2.0/new.korvanplugin"), installed));
    QCOMPARE(machine.error, KRError());
    QCOMPARE(contentOf(machine.plugins("new.korvanplugin")), "new"_ba);
    QCOMPARE(contentOf(machine.plugins("old.korvanplugin")), "old"_ba);
    QCOMPARE(
        machine.environment.systemLogLines, QStringList{u"Failure to move the plugin with error Not a directory."_s});
}

void tst_PluginInstallation::cannotBeMovedAsideNorReplaced()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/1.0/tidy.korvanplugin"), "parked");
    const auto source = machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin");
    makeBundleAt(source, "new");
    machine.forbidTrash();
    QVERIFY(!machine.install(source, machine.installed("tidy.korvanplugin", u"1.0"_s)));
    QCOMPARE(machine.error, (KRError{u"posix"_s, EEXIST, u"File exists"_s}));
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "old"_ba);
    QCOMPARE(contentOf(source), "new"_ba);
    QCOMPARE(machine.environment.systemLogLines,
        (QStringList{u"Failure to move the plugin with error Not a directory."_s,
            u"1. Failure to install plugin with error File exists from: %1, to: %2"_s.arg(
                displayPath(source), displayPath(machine.plugins("tidy.korvanplugin")))}));
}

void tst_PluginInstallation::backupFolderCannotBeMade()
{
    // The folder's error is reported although the installation succeeds: deliberate.
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("old.korvanplugin"), "old");
    makeBundleAt(machine.support() + "/new.korvanplugin", "new");
    writeFileAt(machine.warehouse("com.example.tidy"), "a file in the way of the folder");
    QVERIFY(machine.install(machine.support() + "/new.korvanplugin", machine.installed("old.korvanplugin", u"1.0"_s)));
    QCOMPARE(machine.error, (KRError{u"posix"_s, ENOTDIR, u"Not a directory"_s}));
    QCOMPARE(contentOf(machine.plugins("new.korvanplugin")), "new"_ba);
    QCOMPARE(contentOf(machine.plugins("old.korvanplugin")), "old"_ba);
    QVERIFY(machine.environment.systemLogLines.isEmpty());
}

void tst_PluginInstallation::backupFolderCannotBeMadeAndNothingInstalled()
{
    // The move's error takes the folder's place.
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.support() + "/tidy.korvanplugin", "new");
    writeFileAt(machine.warehouse("com.example.tidy"), "a file in the way of the folder");
    QVERIFY(!machine.install(machine.support() + "/tidy.korvanplugin", machine.installed("tidy.korvanplugin", u"1"_s)));
    QCOMPARE(machine.error, (KRError{u"posix"_s, EEXIST, u"File exists"_s}));
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "old"_ba);
    QCOMPARE(machine.environment.systemLogLines.size(), 1);
}

void tst_PluginInstallation::newBundleIsMissing_data()
{
    QTest::addColumn<QByteArray>("parked");
    QTest::newRow("the old one comes back from the warehouse") << "0.9"_ba;
    QTest::newRow("the old one comes back from the trash") << "1.0"_ba;
}

void tst_PluginInstallation::newBundleIsMissing()
{
    QFETCH(QByteArray, parked);
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.warehouse("com.example.tidy/" + parked + "/tidy.korvanplugin"), "parked");
    const auto source = machine.warehouse("com.example.tidy/2.0/tidy.korvanplugin");
    QVERIFY(!machine.install(source, machine.installed("tidy.korvanplugin", u"1.0"_s)));
    QCOMPARE(machine.error, (KRError{u"posix"_s, ENOENT, u"No such file or directory"_s}));
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "old"_ba);
    QVERIFY(!itemExists(machine.trash("tidy.korvanplugin")));
    QVERIFY(!itemExists(machine.support() + "/data/Trash/info/tidy.korvanplugin.trashinfo"));
    QCOMPARE(contentOf(machine.warehouse("com.example.tidy/" + parked + "/tidy.korvanplugin")), "parked"_ba);
    QCOMPARE(machine.environment.systemLogLines,
        QStringList{u"1. Failure to install plugin with error No such file or directory from: %1, to: %2"_s.arg(
            displayPath(source), displayPath(machine.plugins("tidy.korvanplugin")))});
}

void tst_PluginInstallation::somethingIsInTheWay()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("old.korvanplugin"), "old");
    makeBundleAt(machine.plugins("new.korvanplugin"), "somebody else's");
    makeBundleAt(machine.warehouse("com.example.tidy/2.0/new.korvanplugin"), "new");
    const auto installed = machine.installed("old.korvanplugin", u"1.0"_s);
    QVERIFY(!machine.install(machine.warehouse("com.example.tidy/2.0/new.korvanplugin"), installed));
    QCOMPARE(machine.error.code, EEXIST);
    QCOMPARE(contentOf(machine.plugins("old.korvanplugin")), "old"_ba);
    QCOMPARE(contentOf(machine.plugins("new.korvanplugin")), "somebody else's"_ba);
    QCOMPARE(contentOf(machine.warehouse("com.example.tidy/2.0/new.korvanplugin")), "new"_ba);
}

void tst_PluginInstallation::installedOneIsTheNewOne()
{
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    const auto installed = machine.installed("tidy.korvanplugin", u"1.0"_s);
    QVERIFY(!machine.install(machine.plugins("tidy.korvanplugin"), installed));
    QCOMPARE(machine.error.code, ENOENT);
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "old"_ba);
}

void tst_PluginInstallation::refused_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<std::optional<QString>>("version");

    QTest::newRow("identifier leads out, installed") << u"../../x"_s << std::optional(u"1.0"_s);
    QTest::newRow("identifier leads out, installed without version") << u"../../x"_s << std::optional(QString());
    QTest::newRow("identifier leads out, not installed") << u"a/../.."_s << std::optional<QString>();
    QTest::newRow("empty identifier") << QString() << std::optional(u"1.0"_s);
    QTest::newRow("zero in the identifier") << u"a"_s + QChar(u'\0') << std::optional(u"1.0"_s);
    QTest::newRow("version leads out") << tidy << std::optional(u"../../../x"_s);
    QTest::newRow("version is the folder of all versions") << tidy << std::optional(u"."_s);
}

void tst_PluginInstallation::refused()
{
    QFETCH(QString, identifier);
    QFETCH(std::optional<QString>, version);
    auto &machine = *m_machine;
    makeBundleAt(machine.plugins("tidy.korvanplugin"), "old");
    makeBundleAt(machine.support() + "/new.korvanplugin", "new");
    machine.identifier = identifier;
    const auto installed =
        version ? std::optional(machine.installed("tidy.korvanplugin", *version)) : std::optional<InstalledPlugin>();
    QVERIFY(!machine.install(machine.support() + "/new.korvanplugin", installed));
    QCOMPARE(machine.error.domain, u"KRPluginMangerErrorDomain"_s);
    QCOMPARE(contentOf(machine.plugins("tidy.korvanplugin")), "old"_ba);
    QCOMPARE(contentOf(machine.support() + "/new.korvanplugin"), "new"_ba);
    QVERIFY(!itemExists(machine.support() + "/PluginsWarehouse"));
}

void tst_PluginInstallation::errorIsNotAskedFor()
{
    auto &machine = *m_machine;
    QVERIFY(!installPlugin(QUrl(), tidy, std::nullopt, bundleURL(machine.support() + "/Plugins")));
    QVERIFY(!installPlugin(QUrl(), u".."_s, std::nullopt, bundleURL(machine.support() + "/Plugins")));
}

void tst_PluginInstallation::newer_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("isNewer");

    const auto version = [](const QByteArray &text) -> QByteArray { return R"({"version": ")" + text + R"("})"; };
    QTest::newRow("newer") << version("1.10") << version("1.9") << true;
    QTest::newRow("older") << version("1.9") << version("1.10") << false;
    QTest::newRow("equal") << version("1.0") << version("1") << false;
    QTest::newRow("a manifest without version is 0.0.1") << version("0.0.2") << "{}"_ba << true;
    QTest::newRow("and no newer than that") << "{}"_ba << version("0.0.1") << false;
    QTest::newRow("nothing with a version on the left") << ""_ba << version("1.0") << false;
    QTest::newRow("nothing with a version on either side") << ""_ba
                                                           << ""_ba << false;
    QTest::newRow("nothing with a version on the right") << version("1.0") << ""_ba << false;
}

void tst_PluginInstallation::newer()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(bool, isNewer);
    const auto folder = displayPath(m_machine->support());
    const auto make = [&folder](const QString &name, const QByteArray &manifest) {
        return manifest.isEmpty() ? QUrl(u"file:///missing.korvanplugin"_s)
                                  : BundleBuilder(folder, name).manifest(manifest).url();
    };
    QCOMPARE(isPluginNewerThan(make(u"first"_s, first), make(u"second"_s, second)), isNewer);
}

QTEST_GUILESS_MAIN(tst_PluginInstallation)
#include "tst_plugininstallation.moc"
