// Installations that are killed, or run out of room: somebody's plug-in is always complete, in its place or at hand.

#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "support/ForkedProcess.h"
#include "support/InterruptedProcess.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"
#include "updates/PluginInstallation.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>
#include <QtTest>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int diskSize = 4'000'000;

/// A bundle of several files, folders and a link; the text tells one version from the other.
void makeBundleAt(const QByteArray &path, const QByteArray &text)
{
    writeFileAt(path + "/Contents/Korvan/manifest.json", "{\"name\": \"" + text + "\"}");
    writeFileAt(path + "/Contents/Korvan/tidy.js", QByteArray(100'000, text[0]));
    writeFileAt(path + "/Contents/Korvan/library/deep/empty.js", "");
    writeFileAt(path + "/Contents/Resources/" + text + ".txt", text);
    makeLinkAt(path + "/Contents/Korvan/link.js", "tidy.js");
}

/// Everything that is in a folder, as one text.
QByteArray everythingIn(const QByteArray &path)
{
    QByteArrayList parts;
    QDirIterator entries(QFile::decodeName(path), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo entry(entries.next());
        QFile file(entry.filePath());
        const bool isFile = entry.isFile() && file.open(QIODevice::ReadOnly);
        parts.append(QFile::encodeName(entry.filePath()).mid(path.size()) + ' '
            + (entry.isSymLink() ? entry.symLinkTarget().mid(path.size()).toUtf8() : QByteArray())
            + (isFile ? file.readAll() : QByteArray()));
    }
    std::sort(parts.begin(), parts.end());
    return parts.join('\n');
}

/// Until nothing more goes into a file there.
void fillDisk(const QByteArray &folder)
{
    QFile filler(QFile::decodeName(folder + "/filler"));
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("cannot fill the disk");
    while (filler.write(QByteArray(4096, 'x')) > 0) { }
}

class Machine
{
public:
    Machine()
    {
        makeFolders();
        qputenv("XDG_DATA_HOME", (plugins() + "/.data").constData());
        makeBundleAt(support() + "/patterns/old", "old");
        makeBundleAt(support() + "/patterns/new", "new");
        m_old = everythingIn(support() + "/patterns/old");
        m_new = everythingIn(support() + "/patterns/new");
    }
    ~Machine() { qunsetenv("XDG_DATA_HOME"); }
    Machine(const Machine &) = delete;
    Machine &operator=(const Machine &) = delete;

    QByteArray support() const { return pathFromFileURL(m_environment.applicationSupportFolder()); }
    QByteArray plugins() const { return support() + "/Plugins"; }
    QByteArray warehouse() const { return support() + "/PluginsWarehouse"; }
    QByteArray place() const { return plugins() + "/tidy.korvanplugin"; }
    QByteArray parked(const QByteArray &version) const
    {
        return warehouse() + "/tidy/" + version + "/tidy.korvanplugin";
    }

    void makeFolders() const
    {
        makeFolderAt(plugins());
        makeFolderAt(warehouse());
    }

    enum class OldVersion { IsParkedAlready, IsNotParked };

    void setUp(OldVersion oldVersion = OldVersion::IsNotParked) const
    {
        for (const auto &folder : {plugins() + "/.data", warehouse() + "/tidy", place()})
            QDir(QFile::decodeName(folder)).removeRecursively();
        makeBundleAt(place(), "old");
        makeBundleAt(parked("2.0"), "new");
        if (oldVersion == OldVersion::IsParkedAlready)
            makeBundleAt(parked("1.0"), "old");
    }

    QByteArray whatIsAt(const QByteArray &path) const
    {
        if (!itemExists(path))
            return "nothing";
        const auto content = everythingIn(path);
        return content == m_old ? "old" : content == m_new ? "new" : "ruins";
    }

    bool install(const QByteArray &version) const
    {
        const auto state = whatIsAt(place());
        std::optional<InstalledPlugin> installed;
        if (state != "nothing")
            installed =
                InstalledPlugin{fileURLFromPath(place(), FileKind::Folder), state == "old" ? u"1.0"_s : u"2.0"_s};
        return installPlugin(fileURLFromPath(parked(version), FileKind::Folder), u"tidy"_s, installed,
            fileURLFromPath(plugins(), FileKind::Folder));
    }

    /// What is where.
    QByteArray all() const
    {
        return "at its place: " + whatIsAt(place()) + ", parked: " + whatIsAt(parked("1.0"))
            + ", new: " + whatIsAt(parked("2.0")) + ", left behind: " + leftBehind();
    }

    /// Why this is no state that an end at any moment may leave; empty when it is one.
    QByteArray complaint() const
    {
        const auto atPlace = whatIsAt(place());
        const auto oldOne = whatIsAt(parked("1.0"));
        const auto newOne = whatIsAt(parked("2.0"));
        const bool isHere = atPlace == "old" || atPlace == "new";
        const bool isAtHand = atPlace == "nothing" && oldOne == "old" && newOne == "new";
        const bool isWhole = oldOne != "ruins" && newOne != "ruins";
        return (isHere || isAtHand) && isWhole ? QByteArray() : all();
    }

    /// Installs what is in the warehouse, as somebody does who finds the program gone; the same complaint.
    QByteArray complaintAfterAnother() const
    {
        const QByteArray version = itemExists(parked("2.0")) ? "2.0" : "1.0";
        const QByteArray expected = version == "2.0" ? "new" : "old";
        const bool isInstalled = install(version) && whatIsAt(place()) == expected;
        return isInstalled && leftBehind() == "nothing" ? QByteArray() : "the next installation has left " + all();
    }

    /// The log's lines, with paths that begin in the application's data.
    QByteArray takeLog()
    {
        const auto lines = std::exchange(m_environment.systemLogLines, {}).join(u'\n').toUtf8();
        return QByteArray(lines).replace(support() + '/', "");
    }

private:
    /// Names where the plug-in is that have no meaning for anybody.
    QByteArray leftBehind() const
    {
        const auto filter = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
        auto names = QDir(QFile::decodeName(plugins())).entryList(filter);
        for (const auto &known : {u".data"_s, u"tidy.korvanplugin"_s, u"filler"_s})
            names.removeAll(known);
        return names.isEmpty() ? "nothing"_ba : names.join(u", "_s).toUtf8();
    }

    TestEnvironment m_environment;
    QByteArray m_old;
    QByteArray m_new;
};

using OldVersion = Machine::OldVersion;

QByteArray complaintAfterKillAt(int moment, const Machine &machine, OldVersion oldVersion)
{
    machine.setUp(oldVersion);
    runAndKillAt(moment, [&machine] { machine.install("2.0"); });
    const auto complaint = machine.complaint();
    return complaint.isEmpty() ? machine.complaintAfterAnother() : complaint;
}

QByteArray complaintAfterKills(const Machine &machine, OldVersion oldVersion, quint32 seed)
{
    machine.setUp(oldVersion);
    const int moments = momentsOf([&machine] { machine.install("2.0"); });
    if (machine.whatIsAt(machine.place()) != "new")
        return "the installation fails by itself";
    QRandomGenerator random(seed);
    for (int i = 0; i < 200; ++i) {
        const int moment = random.bounded(moments);
        const auto complaint = complaintAfterKillAt(moment, machine, oldVersion);
        if (!complaint.isEmpty())
            return "killed at " + QByteArray::number(moment) + " of " + QByteArray::number(moments) + ": " + complaint;
    }
    return "fine";
}

} // namespace

class tst_PluginInstallationInterrupted : public QObject
{
    Q_OBJECT

private slots:
    void killed_data();
    void killed();
    void noRoom_data();
    void noRoom();
    void noRoomAndOneDisk();
};

void tst_PluginInstallationInterrupted::killed_data()
{
    QTest::addColumn<bool>("isWarehouseElsewhere");
    QTest::addColumn<OldVersion>("oldVersion");
    QTest::newRow("on one disk") << false << OldVersion::IsNotParked;
    QTest::newRow("on one disk, old one to the trash") << false << OldVersion::IsParkedAlready;
    QTest::newRow("warehouse on another disk") << true << OldVersion::IsNotParked;
    QTest::newRow("warehouse on another disk, old one to the trash") << true << OldVersion::IsParkedAlready;
}

void tst_PluginInstallationInterrupted::killed()
{
    QFETCH(bool, isWarehouseElsewhere);
    QFETCH(OldVersion, oldVersion);
    const auto seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    const Machine machine;
    const auto kills = [&] { return complaintAfterKills(machine, oldVersion, seed); };
    const auto result = resultOnSmallDisk(QFile::decodeName(machine.support()), diskSize, [&]() -> QByteArray {
        machine.makeFolders();
        return isWarehouseElsewhere ? resultOnSmallDisk(QFile::decodeName(machine.warehouse()), diskSize, kills)
                                    : kills();
    });
    QCOMPARE(result, "fine"_ba);
}

void tst_PluginInstallationInterrupted::noRoom_data()
{
    QTest::addColumn<QByteArray>("fullDisk");
    QTest::addColumn<QByteArray>("log");

    QTest::newRow("for the new one") << "Plugins"_ba
                                     << "1. Failure to install plugin with error No space left on device from: "
                                        "PluginsWarehouse/tidy/2.0/tidy.korvanplugin, to: Plugins/tidy.korvanplugin"_ba;
    QTest::newRow("for the old one") << "PluginsWarehouse"_ba
                                     << "Failure to move the plugin with error No space left on device.\n"
                                        "1. Failure to install plugin with error File exists from: "
                                        "PluginsWarehouse/tidy/2.0/tidy.korvanplugin, to: Plugins/tidy.korvanplugin"_ba;
}

void tst_PluginInstallationInterrupted::noRoom()
{
    QFETCH(QByteArray, fullDisk);
    QFETCH(QByteArray, log);
    Machine machine;
    const auto result = resultOnSmallDisk(QFile::decodeName(machine.support()), diskSize, [&] {
        machine.makeFolders();
        return resultOnSmallDisk(QFile::decodeName(machine.warehouse()), diskSize, [&] {
            machine.setUp();
            fillDisk(machine.support() + '/' + fullDisk);
            const bool isInstalled = machine.install("2.0");
            return (isInstalled ? "installed\n"_ba : "not installed\n"_ba) + machine.takeLog() + '\n' + machine.all();
        });
    });
    QCOMPARE(result, "not installed\n" + log + "\nat its place: old, parked: nothing, new: new, left behind: nothing");
}

void tst_PluginInstallationInterrupted::noRoomAndOneDisk()
{
    // Renames need none. (On this file system; a disk may want some for the folder's new entry.)
    Machine machine;
    const auto result = resultOnSmallDisk(QFile::decodeName(machine.support()), diskSize, [&] {
        machine.makeFolders();
        machine.setUp();
        makeFolderAt(machine.warehouse() + "/tidy/1.0");
        fillDisk(machine.support());
        return machine.install("2.0") ? machine.all() : "not installed"_ba;
    });
    QCOMPARE(result, "at its place: new, parked: old, new: nothing, left behind: nothing"_ba);
}

QTEST_GUILESS_MAIN(tst_PluginInstallationInterrupted)
#include "tst_plugininstallation_interrupted.moc"
