#include "commands/PluginSettings.h"

#include "platform/FolderLock.h"
#include "support/ForkedProcess.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto plugin = u"com.example.tidy"_s;

QString folder(const TestEnvironment &environment)
{
    return environment.applicationSupportFolder().toLocalFile() + u"PluginSettings/"_s;
}

QStringList filesIn(const QString &path)
{
    return QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class tst_PluginSettings : public QObject
{
    Q_OBJECT

private slots:
    void valuesSurvive_data();
    void valuesSurvive();
    void readingMakesNoFile();
    void nilRemoves();
    void clearRemovesTheFile();
    void othersAreNotSeen();
    void hostileIdentifiers_data();
    void hostileIdentifiers();
    void whatCannotBeKeptChangesNothing_data();
    void whatCannotBeKeptChangesNothing();
    void tooMuchChangesNothing();
    void unreadableFilesAreKeptAside_data();
    void unreadableFilesAreKeptAside();
    void twoProcessesKeepBothChanges();
    void processesAtTheSameTimeKeepAllChanges();
    void aLockThatIsHeldIsReported();
    void aFileThatCannotBeWrittenIsReported();
    void theSameValueIsNotWrittenAgain();

private:
    TestEnvironment m_environment;

public slots:
    void cleanup() { QDir(folder(m_environment)).removeRecursively(); }
};

void tst_PluginSettings::valuesSurvive_data()
{
    QTest::addColumn<QVariant>("value");

    QTest::newRow("a text") << QVariant(u"Größe \"1\""_s);
    QTest::newRow("an empty text") << QVariant(u""_s);
    QTest::newRow("a number") << QVariant(1.5);
    QTest::newRow("a whole number") << QVariant(7LL);
    QTest::newRow("a boolean") << QVariant(false);
    QTest::newRow("null") << QVariant::fromValue(nullptr);
    QTest::newRow("an array") << QVariant(QVariantList{1LL, u"a"_s, QVariant::fromValue(nullptr)});
    QTest::newRow("an object") << QVariant(QVariantMap{{u"a"_s, QVariantMap{{u"b"_s, true}}}, {u""_s, 1LL}});
}

void tst_PluginSettings::valuesSurvive()
{
    QFETCH(QVariant, value);
    PluginSettings settings(plugin);
    QCOMPARE(settings.setValues({{u"key"_s, value}, {u"__proto__"_s, 1LL}}), std::nullopt);
    const QVariantMap expected{{u"key"_s, value}, {u"__proto__"_s, 1LL}};
    QCOMPARE(settings.values(), expected);
    QCOMPARE(PluginSettings(plugin).values(), expected);
}

void tst_PluginSettings::readingMakesNoFile()
{
    QCOMPARE(PluginSettings(plugin).values(), QVariantMap());
    QVERIFY(!QFileInfo::exists(folder(m_environment)));
}

void tst_PluginSettings::nilRemoves()
{
    PluginSettings settings(plugin);
    QCOMPARE(settings.setValues({{u"a"_s, 1LL}, {u"b"_s, 2LL}}), std::nullopt);
    QCOMPARE(settings.setValues({{u"a"_s, QVariant()}, {u"none"_s, QVariant()}}), std::nullopt);
    QCOMPARE(PluginSettings(plugin).values(), QVariantMap({{u"b"_s, 2LL}}));
}

void tst_PluginSettings::clearRemovesTheFile()
{
    PluginSettings settings(plugin);
    QCOMPARE(settings.setValues({{u"a"_s, 1LL}}), std::nullopt);
    QCOMPARE(settings.clear(), std::nullopt);
    QCOMPARE(settings.clear(), std::nullopt);
    QCOMPARE(settings.values(), QVariantMap());
    QCOMPARE(filesIn(folder(m_environment)), QStringList());
    QCOMPARE(settings.setValues({{u"a"_s, 2LL}}), std::nullopt);
    QCOMPARE(PluginSettings(plugin).values(), QVariantMap({{u"a"_s, 2LL}}));
}

void tst_PluginSettings::othersAreNotSeen()
{
    QCOMPARE(PluginSettings(u"com.example.A"_s).setValues({{u"a"_s, 1LL}}), std::nullopt);
    QCOMPARE(PluginSettings(u"com.example.a"_s).values(), QVariantMap());
    QCOMPARE(PluginSettings(u"com.example.a"_s).setValues({{u"a"_s, 2LL}}), std::nullopt);
    QCOMPARE(PluginSettings(u"com.example.A"_s).values(), QVariantMap({{u"a"_s, 1LL}}));
    const auto files = filesIn(folder(m_environment));
    QCOMPARE(files.size(), 2);
    // Also where the file system does not tell their cases apart.
    QVERIFY(files.at(0).compare(files.at(1), Qt::CaseInsensitive) != 0);
}

void tst_PluginSettings::hostileIdentifiers_data()
{
    QTest::addColumn<QString>("identifier");

    QTest::newRow("empty") << u""_s;
    QTest::newRow("the folder") << u"."_s;
    QTest::newRow("the folder above") << u".."_s;
    QTest::newRow("a path upwards") << u"../../../../tmp/evil"_s;
    QTest::newRow("a whole path") << u"/etc/passwd"_s;
    QTest::newRow("hidden") << u".hidden"_s;
    QTest::newRow("NUL") << u"a\0b"_s;
    QTest::newRow("line ends") << u"a\nb\r"_s;
    QTest::newRow("longer than a name") << QString(5000, u'x');
    QTest::newRow("not ASCII") << u"com.größe.日本"_s;
    QTest::newRow("a reserved name") << u"CON"_s;
}

void tst_PluginSettings::hostileIdentifiers()
{
    QFETCH(QString, identifier);
    QCOMPARE(PluginSettings(identifier).setValues({{u"a"_s, 1LL}}), std::nullopt);
    QCOMPARE(PluginSettings(identifier).values(), QVariantMap({{u"a"_s, 1LL}}));
    const auto files = filesIn(folder(m_environment));
    QCOMPARE(files.size(), 1);
    QVERIFY(!files.first().startsWith(u'.'));
    QVERIFY(files.first().size() < 128);
}

void tst_PluginSettings::whatCannotBeKeptChangesNothing_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("a date") << u"key"_s << QVariant(QDateTime::currentDateTime());
    QTest::newRow("a date inside") << u"key"_s << QVariant(QVariantList{QDateTime::currentDateTime()});
    QTest::newRow("bytes") << u"key"_s << QVariant(QByteArray("a"));
    QTest::newRow("no number") << u"key"_s << QVariant(qQNaN());
    QTest::newRow("nil inside") << u"key"_s << QVariant(QVariantList{QVariant()});
    QTest::newRow("half of a character as key") << QString(QChar(0xd800)) << QVariant(1LL);
}

void tst_PluginSettings::whatCannotBeKeptChangesNothing()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    PluginSettings settings(plugin);
    QCOMPARE(settings.setValues({{u"old"_s, 1LL}}), std::nullopt);
    const auto error = settings.setValues({{u"new"_s, 2LL}, {key, value}});
    QVERIFY(error);
    QCOMPARE(error->localizedDescription,
        u"The setting \"%1\" cannot be kept: settings are texts, numbers, booleans, null, and arrays and plain objects "
        "of them."_s.arg(key));
    QCOMPARE(PluginSettings(plugin).values(), QVariantMap({{u"old"_s, 1LL}}));
}

void tst_PluginSettings::tooMuchChangesNothing()
{
    PluginSettings settings(plugin);
    QCOMPARE(settings.setValues({{u"old"_s, QString(1000 * 1000, u'x')}}), std::nullopt);
    const auto error = settings.setValues({{u"new"_s, QString(100 * 1000, u'x')}});
    QVERIFY(error && error->localizedDescription.contains(u"1048576 bytes"_s));
    QCOMPARE(PluginSettings(plugin).values().keys(), QStringList({u"old"_s}));
}

void tst_PluginSettings::unreadableFilesAreKeptAside_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("{");
    QTest::newRow("no object") << QByteArray("[1]");
    QTest::newRow("no values") << QByteArray(R"({"identifier": "com.example.tidy"})");
    QTest::newRow("another plug-in's") << QByteArray(R"({"identifier": "com.example.other", "values": {"a": 1}})");
    QTest::newRow("too large") << QByteArray(R"({"identifier": "com.example.tidy", "values": {"a": ")")
            + QByteArray(PluginSettings::largestSize, 'x') + "\"}}";
}

void tst_PluginSettings::unreadableFilesAreKeptAside()
{
    QFETCH(QByteArray, content);
    const auto path = QString::fromUtf8(PluginSettings::fileFor(plugin));
    write(path, content);

    m_environment.systemLogLines.clear();
    PluginSettings settings(plugin);
    QCOMPARE(settings.values(), QVariantMap());
    QCOMPARE(filesIn(folder(m_environment)).size(), 1);
    QCOMPARE(settings.setValues({{u"a"_s, 1LL}}), std::nullopt);
    QCOMPARE(PluginSettings(plugin).values(), QVariantMap({{u"a"_s, 1LL}}));
    QFile kept(path + u".unreadable"_s);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), content);
    QCOMPARE(settings.setValues({{u"a"_s, 2LL}}), std::nullopt);
    QCOMPARE(filesIn(folder(m_environment)).size(), 2);
    QCOMPARE(m_environment.systemLogLines,
        QStringList(u"The settings file \"%1\" cannot be read and is kept as \"%1.unreadable\"."_s.arg(path)));
}

void tst_PluginSettings::twoProcessesKeepBothChanges()
{
    PluginSettings one(plugin);
    PluginSettings other(plugin);
    QCOMPARE(one.setValues({{u"one"_s, 1LL}}), std::nullopt);
    QCOMPARE(other.setValues({{u"other"_s, 2LL}}), std::nullopt);
    QCOMPARE(one.setValues({{u"one"_s, 3LL}}), std::nullopt);
    const QVariantMap expected{{u"one"_s, 3LL}, {u"other"_s, 2LL}};
    QCOMPARE(one.values(), expected);
    QCOMPARE(other.values(), expected);
}

void tst_PluginSettings::processesAtTheSameTimeKeepAllChanges()
{
    constexpr int count = 60;
    const auto setKeys = [](const QString &prefix) {
        PluginSettings settings(plugin);
        for (int number = 0; number < count; ++number) {
            if (settings.setValues({{prefix + QString::number(number), 1LL}}))
                qFatal("a setting was refused");
        }
    };
    ForkedProcess one([&] { setKeys(u"one"_s); });
    ForkedProcess other([&] { setKeys(u"other"_s); });
    QCOMPARE(one.wait(), 0);
    QCOMPARE(other.wait(), 0);
    QCOMPARE(PluginSettings(plugin).values().size(), 2 * count);
    QCOMPARE(filesIn(folder(m_environment)).size(), 1);
}

void tst_PluginSettings::aLockThatIsHeldIsReported()
{
    QCOMPARE(PluginSettings(plugin).setValues({{u"a"_s, 1LL}}), std::nullopt);
    {
        const auto lock = FolderLock::lock(folder(m_environment).toUtf8(), std::chrono::seconds(0));
        QVERIFY(lock);
        const auto error = PluginSettings(plugin).setValues({{u"a"_s, 2LL}});
        QVERIFY(error);
        QCOMPARE(error->localizedDescription,
            u"The settings cannot be written to \"%1\": another process has been changing settings there for too "
            "long. Try again, or end that process."_s.arg(QString::fromUtf8(PluginSettings::fileFor(plugin))));
        QCOMPARE(PluginSettings(plugin).values(), QVariantMap({{u"a"_s, 1LL}}));
    }
    QCOMPARE(PluginSettings(plugin).setValues({{u"a"_s, 2LL}}), std::nullopt);
}

void tst_PluginSettings::aFileThatCannotBeWrittenIsReported()
{
    write(m_environment.applicationSupportFolder().toLocalFile() + u"PluginSettings"_s, "a file");
    PluginSettings settings(plugin);
    const auto error = settings.setValues({{u"a"_s, 1LL}});
    QVERIFY(error);
    QCOMPARE(error->localizedDescription,
        u"The settings cannot be written to \"%1\": Not a directory"_s.arg(
            QString::fromUtf8(PluginSettings::fileFor(plugin))));
    QCOMPARE(settings.values(), QVariantMap());
    QVERIFY(QFile::remove(m_environment.applicationSupportFolder().toLocalFile() + u"PluginSettings"_s));
}

void tst_PluginSettings::theSameValueIsNotWrittenAgain()
{
    PluginSettings settings(plugin);
    QCOMPARE(settings.setValues({{u"a"_s, 1LL}}), std::nullopt);
    const auto before = identityOfFile(PluginSettings::fileFor(plugin));
    QCOMPARE(settings.setValues({{u"a"_s, 1LL}}), std::nullopt);
    QCOMPARE(identityOfFile(PluginSettings::fileFor(plugin)), before);
}

QTEST_GUILESS_MAIN(tst_PluginSettings)
#include "tst_pluginsettings.moc"
