// What the program tells of the executables in a plug-in.

#include "CommandLineFixture.h"
#include "support/MachOBuilder.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;

class tst_CommandLine_Executables : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();
    void none();
    void severalForEveryProcessor();
    void forOtherProcessors();

private:
    void addExecutable(const QString &pathInBundle, const QByteArray &content) const;
    Finished info(const QStringList &options = {}) const
    {
        return run(QStringList{u"--folder"_s, u"plugins"_s, u"info"_s, u"p"_s} + options);
    }
};

namespace {

constexpr auto x86_64 = MachOBuilder::x86_64;
constexpr auto arm64 = MachOBuilder::arm64;

/// The other one of the two processors that are known.
quint32 otherProcessor()
{
    return QSysInfo::buildCpuArchitecture() == u"x86_64" ? arm64 : x86_64;
}

} // namespace

void tst_CommandLine_Executables::init()
{
    makeFolder();
    plugin(u"P"_s, R"({"identifier": "p"})");
}

void tst_CommandLine_Executables::addExecutable(const QString &pathInBundle, const QByteArray &content) const
{
    const auto path = m_folder->filePath(u"plugins/P.korvanplugin/"_s + pathInBundle);
    writeFile(path, content);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void tst_CommandLine_Executables::none()
{
    addExecutable(u"script.sh"_s, "#!/bin/sh\n");
    const auto document = info({u"--json"_s}).json();
    QVERIFY(document.contains(u"executables"_s));
    QCOMPARE(document.value(u"executables"_s), QJsonValue(QJsonObject()));
    QCOMPARE(document.value(u"hasUnsupportedBinaries"_s), QJsonValue(false));
    const auto text = info().output;
    QVERIFY2(text.contains("hasUnsupportedBinaries  no\n"), text.constData());
    QVERIFY2(!text.contains("\nexecutables"), text.constData());
}

void tst_CommandLine_Executables::severalForEveryProcessor()
{
    addExecutable(u"Contents/Resources/to ol ü"_s, MachOBuilder::universal({x86_64, arm64}));
    addExecutable(u".hidden"_s, MachOBuilder::universal({arm64, x86_64}));
    const auto document = info({u"--json"_s}).json();
    const QJsonObject expected{
        {u".hidden"_s, QJsonArray{u"arm64"_s, u"arm64e"_s, u"x86_64"_s}},
        {u"Contents/Resources/to ol ü"_s, QJsonArray{u"x86_64"_s, u"arm64"_s, u"arm64e"_s}},
    };
    QCOMPARE(document.value(u"executables"_s).toObject(), expected);
    QCOMPARE(document.value(u"hasUnsupportedBinaries"_s), QJsonValue(false));
    const auto text = info().output;
    QVERIFY2(text.endsWith("\n\n.hidden  arm64, arm64e, x86_64\nContents/Resources/to ol ü  x86_64, arm64, arm64e\n"),
        text.constData());
}

void tst_CommandLine_Executables::forOtherProcessors()
{
    addExecutable(u"tool"_s, MachOBuilder::plain64(otherProcessor()));
    const auto finished = info({u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json().value(u"executables"_s).toObject().keys(), QStringList{u"tool"_s});
    QCOMPARE(finished.json().value(u"hasUnsupportedBinaries"_s), QJsonValue(true));
    const auto text = info().output;
    QVERIFY2(text.contains("hasUnsupportedBinaries  yes\n"), text.constData());
}

QTEST_GUILESS_MAIN(tst_CommandLine_Executables)
#include "tst_commandline_executables.moc"
