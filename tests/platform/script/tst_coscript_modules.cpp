// require: which file a name leads to, and that none outside of the plug-in can be read.

#include "platform/FileURL.h"
#include "support/BundleBuilder.h"
#include "support/TestSession.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_COScript_Modules : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void files_data();
    void files();
    void refusals_data();
    void refusals();
    void linksThatLeadOutside();
    void modulesAreLoadedOnce();
    void cyclesSeeWhatIsThere();
    void failedModulesAreTriedAgain();
    void moduleKnowsItself();
    void namesOfAnyBytes();
    void coreModules();
    void coreModulesComeFirst();
    void messageSendsInModules();
    void messageSendsInModulesWhenSwitchedOff();

private:
    /// The value of an expression, or what it throws.
    QString valueOf(const QString &expression);

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

void tst_COScript_Modules::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_session = TestSession::make(*m_environment);
}

void tst_COScript_Modules::cleanup()
{
    m_session.reset();
    m_environment.reset();
}

QString tst_COScript_Modules::valueOf(const QString &expression)
{
    return m_session->run(u"try { String("_s + expression + u") } catch (error) { error.message }"_s).toString();
}

void tst_COScript_Modules::files_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("with extension") << u"./a.js"_s << u"a"_s;
    QTest::newRow("without extension") << u"./a"_s << u"a"_s;
    QTest::newRow("data") << u"./data.json"_s << u"data"_s;
    QTest::newRow("data without extension") << u"./data"_s << u"data"_s;
    QTest::newRow("script before data") << u"./both"_s << u"script"_s;
    QTest::newRow("folder") << u"./folder"_s << u"index"_s;
    QTest::newRow("folder with slash") << u"./folder/"_s << u"index"_s;
    QTest::newRow("file in a folder") << u"./folder/b"_s << u"b"_s;
    QTest::newRow("up again") << u"./folder/../a"_s << u"a"_s;
    QTest::newRow("above the script") << u"../Resources/c"_s << u"c"_s;
    QTest::newRow("from a module") << u"./folder/relative"_s << u"b"_s;
    QTest::newRow("byte-order mark") << u"./mark"_s << u"marked"_s;
}

void tst_COScript_Modules::files()
{
    m_session->write(u"a.js"_s, "module.exports = 'a'");
    m_session->write(u"data.json"_s, "\"data\"");
    m_session->write(u"both.js"_s, "module.exports = 'script'");
    m_session->write(u"both.json"_s, "\"data\"");
    m_session->write(u"folder/index.js"_s, "module.exports = 'index'");
    m_session->write(u"folder/b.js"_s, "module.exports = 'b'");
    m_session->write(u"folder/relative.js"_s, "module.exports = require('./b')");
    m_session->write(u"../Resources/c.js"_s, "module.exports = 'c'");
    m_session->write(u"mark.js"_s, "\xEF\xBB\xBFmodule.exports = 'marked'");
    QFETCH(QString, name);
    QTEST(valueOf(u"require('"_s + name + u"')"_s), "value");
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_Modules::refusals_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("missing") << u"'./missing'"_s << u"Cannot find module './missing'."_s;
    QTest::newRow("bare name") << u"'lodash'"_s
                               << u"Cannot find module 'lodash'. Files of the plug-in are required as './lodash'."_s;
    QTest::newRow("empty name") << u"''"_s << u"Cannot find module ''. Files of the plug-in are required as './'."_s;
    QTest::newRow("far above") << u"'../../../outside'"_s
                               << u"Module '../../../outside' lies outside of the plug-in."_s;
    QTest::newRow("absolute") << u"'/etc/passwd'"_s << u"Module '/etc/passwd' lies outside of the plug-in."_s;
    QTest::newRow("roundabout") << u"'./a/../../../../outside'"_s
                                << u"Module './a/../../../../outside' lies outside of the plug-in."_s;
    QTest::newRow("sibling of like name") << u"'../../../Tidy.korvanplugin2/a'"_s
                                          << u"Module '../../../Tidy.korvanplugin2/a' lies outside of the plug-in."_s;
    QTest::newRow("folder without index") << u"'./empty'"_s << u"Cannot find module './empty'."_s;
    QTest::newRow("NUL") << u"'./a\\0.js'"_s << u"Cannot find module './a\0.js'."_s;
}

void tst_COScript_Modules::refusals()
{
    writeFile(m_environment->path(u"outside.js"_s), "print('read')");
    writeFile(m_environment->path(u"Tidy.korvanplugin2/a.js"_s), "print('read')");
    m_session->write(u"empty/other.js"_s, "print('read')");
    QFETCH(QString, name);
    QTEST(valueOf(u"require("_s + name + u")"_s), "message");
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Modules::linksThatLeadOutside()
{
    writeFile(m_environment->path(u"outside/index.js"_s), "print('read')");
    m_session->write(u"a.js"_s, "");
    const auto folder = m_environment->path(u"Tidy.korvanplugin/Contents/Korvan/"_s);
    QVERIFY(QFile::link(m_environment->path(u"outside/index.js"_s), folder + u"file.js"_s));
    QVERIFY(QFile::link(m_environment->path(u"outside"_s), folder + u"linked"_s));
    for (const auto &name : {u"./file"_s, u"./linked"_s, u"./linked/index"_s})
        QCOMPARE(valueOf(u"require('"_s + name + u"')"_s), u"Module '"_s + name + u"' lies outside of the plug-in."_s);
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Modules::modulesAreLoadedOnce()
{
    m_session->write(u"a.js"_s, "print('loaded'); exports.count = 0");
    QCOMPARE(valueOf(u"(require('./a').count++, require('./a.js').count++, require('./x/../a').count)"_s), u"2"_s);
    QCOMPARE(m_session->printed, QStringList{u"loaded"_s});
    const auto other = TestSession::make(*m_environment);
    QCOMPARE(other->run(u"require('./a').count"_s), QVariant(0)); // each session has its own
}

void tst_COScript_Modules::cyclesSeeWhatIsThere()
{
    m_session->write(u"a.js"_s, "exports.early = 1; exports.b = require('./b'); exports.late = 2");
    m_session->write(u"b.js"_s, "const a = require('./a'); exports.seen = Object.keys(a).join()");
    QCOMPARE(valueOf(u"require('./a').b.seen + require('./a').late"_s), u"early2"_s);
}

void tst_COScript_Modules::failedModulesAreTriedAgain()
{
    m_session->write(u"a.js"_s, "throw new Error('not today')");
    QCOMPARE(valueOf(u"require('./a')"_s), u"not today"_s);
    m_session->write(u"a.js"_s, "module.exports = 'today'");
    QCOMPARE(valueOf(u"require('./a')"_s), u"today"_s);
    m_session->write(u"bad.json"_s, "{\"a\":");
    QVERIFY(valueOf(u"require('./bad.json')"_s).endsWith(u"bad.json: JSON Parse error: Unexpected EOF"_s));
}

void tst_COScript_Modules::moduleKnowsItself()
{
    m_session->write(u"lib/a.js"_s, "module.exports = [__filename, __dirname, module.id, this === exports].join('|')");
    const auto folder = m_environment->path(u"Tidy.korvanplugin/Contents/Korvan/lib"_s);
    QCOMPARE(
        valueOf(u"require('./lib/a')"_s), u"%1/a.js|%1|%1/a.js|false"_s.arg(folder).replace(u"|false"_s, u"|true"_s));
    QCOMPARE(valueOf(u"typeof module + typeof exports"_s), u"undefinedundefined"_s);
}

void tst_COScript_Modules::namesOfAnyBytes()
{
    m_session->write(u"größe %20 'a'.js"_s, "module.exports = 'odd'");
    QCOMPARE(valueOf(u"require(\"./größe %20 'a'\")"_s), u"odd"_s);
}

void tst_COScript_Modules::coreModules()
{
    writeFile(m_environment->path(u"core/ui/index.js"_s), "exports.name = 'ui ' + require('./helper')");
    writeFile(m_environment->path(u"core/ui/helper.js"_s), "module.exports = 'helped'");
    writeFile(m_environment->path(u"core/path.js"_s), "print('loaded'); exports.name = 'path'");
    const auto session = TestSession::make(*m_environment,
        {{u"app/ui"_s, fileURLFromPath(m_environment->path(u"core/ui/index.js"_s), FileKind::File)},
            {u"path"_s, fileURLFromPath(m_environment->path(u"core/path.js"_s), FileKind::File)}});
    QCOMPARE(session->run(u"require('app/ui').name"_s), QVariant(u"ui helped"_s));
    QCOMPARE(session->run(u"require('path').name + require('node:path').name"_s), QVariant(u"pathpath"_s));
    QCOMPARE(session->printed, QStringList{u"loaded"_s});
    QCOMPARE(session->run(u"try { require('fs') } catch (error) { error.message }"_s),
        QVariant(
            u"Cannot find module 'fs'. Files of the plug-in are required as './fs'. Modules of the application are: "
            "app/ui, path."_s));
}

void tst_COScript_Modules::coreModulesComeFirst()
{
    writeFile(m_environment->path(u"core/path.js"_s), "module.exports = 'core'");
    const auto session = TestSession::make(
        *m_environment, {{u"path"_s, fileURLFromPath(m_environment->path(u"core/path.js"_s), FileKind::File)}});
    session->write(u"path.js"_s, "module.exports = 'own'");
    QCOMPARE(session->run(u"require('path') + require('./path')"_s), QVariant(u"coreown"_s));
}

void tst_COScript_Modules::messageSendsInModules()
{
    m_session->write(u"a.js"_s, "const o = { add_to(a, b) { return a + b } };\nmodule.exports = [o add:1 to:2]");
    QCOMPARE(valueOf(u"require('./a')"_s), u"3"_s);
}

void tst_COScript_Modules::messageSendsInModulesWhenSwitchedOff()
{
    m_session->script->setShouldPreprocess(false);
    m_session->write(u"a.js"_s, "module.exports = [o add:1 to:2]");
    QVERIFY(valueOf(u"require('./a')"_s).startsWith(u"Unexpected identifier 'add'"_s));
}

QTEST_GUILESS_MAIN(tst_COScript_Modules)
#include "tst_coscript_modules.moc"
