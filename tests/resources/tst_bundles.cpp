// What the build makes of resources/: a file for each core module, and the licences of what is in them.

#include "commands/CoreModules.h"
#include "platform/LTAppEnvironment.h"
#include "platform/script/ScriptGlobalNames.h"
#include "support/TestEnvironment.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_Bundles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QFile::link(QStringLiteral(KORVAN_RESOURCES_FOLDER), m_environment.path(u"resources"_s)));
    }

    void nodeModules_data();
    void nodeModules();
    void globals();
    void licencesOfAllPackages();
    void nothingOfTheBuildingMachine();

private:
    TestEnvironment m_environment;
};

void tst_Bundles::nodeModules_data()
{
    QTest::addColumn<QString>("name");
    for (const char *const name : {"buffer", "console", "events", "os", "path", "process", "querystring", "stream",
             "string_decoder", "timers", "util"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_Bundles::nodeModules()
{
    QFETCH(QString, name);
    const auto file = coreModulesOfApplication().value(name).toLocalFile();
    QVERIFY(file.endsWith(u"/core-modules/@krpm/%1/index.js"_s.arg(name)));
    QVERIFY(QFile::exists(file));
}

void tst_Bundles::globals()
{
    for (const auto name : scriptGlobalNames()) {
        const auto global = coreModuleOfGlobal(name.toString(), coreModulesOfApplication());
        QVERIFY2(QFile::exists(global.file.toLocalFile()), qPrintable(name.toString()));
    }
}

void tst_Bundles::licencesOfAllPackages()
{
    const auto licences = contentOf(m_environment.path(u"resources/core-modules/LICENSES.txt"_s));
    const auto package =
        QJsonDocument::fromJson(contentOf(QStringLiteral(KORVAN_SOURCE_DIR "/resources/package.json")));
    auto dependencies = package.object().value(u"devDependencies"_s).toObject();
    for (const auto &tool : {u"esbuild"_s, u"typescript"_s})
        QVERIFY2(!dependencies.take(tool).isUndefined(), qPrintable(tool)); // which is in no bundle
    for (auto entry = dependencies.begin(); entry != dependencies.end(); ++entry) {
        const auto heading = entry.key() + u' ' + entry.value().toString() + u" ("_s;
        QVERIFY2(licences.contains(heading.toUtf8()), qPrintable(heading));
    }
}

void tst_Bundles::nothingOfTheBuildingMachine()
{
    QDirIterator files(QStringLiteral(KORVAN_RESOURCES_FOLDER), QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); ++count) {
        const auto content = contentOf(files.next());
        QVERIFY2(!content.contains("../../") && !content.contains(KORVAN_SOURCE_DIR), qPrintable(files.filePath()));
    }
    QVERIFY(count > 15);
}

QTEST_GUILESS_MAIN(tst_Bundles)
#include "tst_bundles.moc"
