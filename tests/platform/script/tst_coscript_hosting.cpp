// What a session finds outside of the language: services of the host, and globals that core modules implement.

#include "platform/FileURL.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptGlobalNames.h"
#include "platform/script/ScriptHost.h"
#include "platform/script/ScriptValue.h"
#include "support/BundleBuilder.h"
#include "support/TestSession.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// A service with an operation, which says when it goes.
class Counter final : public ScriptObject
{
public:
    explicit Counter(int &gone)
        : m_gone(gone)
    { }
    ~Counter() override { ++m_gone; }

    double next() { return ++m_count; }
    const ScriptClass &scriptClass() const override
    {
        static constexpr ScriptOperation operations[] = {scriptOperation<&Counter::next>("next")};
        static constexpr ScriptClass description{"Counter", operations};
        return description;
    }

private:
    int &m_gone;
    double m_count = 0;
};

class Hosting final : public ScriptHosting
{
public:
    QVariant hostService(const QString &name, const std::shared_ptr<ScriptHost> &sessionHost) override
    {
        asked.append(name);
        host = sessionHost;
        return services.contains(name) ? services.value(name)() : QVariant();
    }

    ScriptGlobal scriptGlobal(const QString &name) override
    {
        askedGlobals.append(name);
        return globals.value(name);
    }

    QMap<QString, std::function<QVariant()>> services;
    QMap<QString, ScriptGlobal> globals;
    QStringList asked;
    QStringList askedGlobals;
    std::weak_ptr<ScriptHost> host;
};

} // namespace

class tst_COScript_Hosting : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void servicesAnswerCoreModules_data();
    void servicesAnswerCoreModules();
    void aServiceIsMadeOnce();
    void aServiceEndsWithItsSession();
    void filesOfCoreModulesAreTheirs();
    void refusals_data();
    void refusals();
    void aHostKeepsTheSessionRunning();
    void aHostPrintsAndKnowsItsSession();
    void mentions_data();
    void mentions();
    void globalsAreLoadedOnFirstUse();
    void globalsOfModules();
    void globalsThatScriptsDeclare_data();
    void globalsThatScriptsDeclare();
    void globalsWithoutAModule();
    void globalsThatFailToLoad();
    void pushedObjectsComeFirst();

private:
    QUrl coreFile(const QString &name, const QByteArray &content) const
    {
        const auto path = m_environment->path(u"core/"_s + name);
        writeFile(path, content);
        return fileURLFromPath(path, FileKind::File);
    }
    void start(const COScript::CoreModules &modules = {})
    {
        m_session = TestSession::make(*m_environment, modules);
        m_session->script->setHosting(m_hosting);
    }
    /// The value of an expression, or what it throws.
    QString valueOf(const QString &expression)
    {
        return m_session->run(u"try { String("_s + expression + u") } catch (error) { error.message }"_s).toString();
    }

    /// How many counters have gone; outlives their sessions.
    int m_gone = 0;
    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<Hosting> m_hosting;
    std::shared_ptr<TestSession> m_session;
};

void tst_COScript_Hosting::init()
{
    m_gone = 0;
    m_environment = std::make_unique<TestEnvironment>();
    m_hosting = std::make_shared<Hosting>();
}

void tst_COScript_Hosting::cleanup()
{
    m_session.reset();
    m_hosting.reset();
    m_environment.reset();
}

void tst_COScript_Hosting::servicesAnswerCoreModules_data()
{
    QTest::addColumn<QByteArray>("module");
    QTest::addColumn<QString>("value");
    QTest::newRow("object") << "module.exports = require('host:counter').next()"_ba << u"1"_s;
    QTest::newRow("function") << "module.exports = require('host:double')(21)"_ba << u"42"_s;
    QTest::newRow("dictionary") << "module.exports = require('host:facts').version"_ba << u"98.3"_s;
    QTest::newRow("unknown") << "module.exports = require('host:unknown')"_ba
                             << u"Cannot find module 'host:unknown': the application has no service of that name."_s;
    QTest::newRow("code of the error") << "try { require('host:unknown') } catch (e) { module.exports = e.code }"_ba
                                       << u"MODULE_NOT_FOUND"_s;
    QTest::newRow("failing") << "module.exports = require('host:failing')"_ba << u"not now"_s;
}

void tst_COScript_Hosting::servicesAnswerCoreModules()
{
    const auto counter = std::make_shared<Counter>(m_gone);
    m_hosting->services = {
        {u"counter"_s, [&] { return QVariant::fromValue(ScriptObjectPointer(counter)); }},
        {u"double"_s,
            [] {
                return QVariant::fromValue(
                    NativeFunction{[](const QVariantList &arguments) { return arguments.first().toInt() * 2; }});
            }},
        {u"facts"_s,
            [] {
                return QVariantMap{{u"version"_s, u"98.3"_s}};
            }},
        {u"failing"_s, []() -> QVariant { throw ScriptException(u"not now"_s); }},
    };
    QFETCH(QByteArray, module);
    start({{u"core"_s, coreFile(u"core.js"_s, module)}});
    QTEST(valueOf(u"require('core')"_s), "value");
}

void tst_COScript_Hosting::aServiceIsMadeOnce()
{
    m_hosting->services = {
        {u"counter"_s, [&] { return QVariant::fromValue(ScriptObjectPointer(std::make_shared<Counter>(m_gone))); }}};
    const auto module = "exports.counter = require('host:counter'); exports.next = () => exports.counter.next()"_ba;
    start({{u"a"_s, coreFile(u"a.js"_s, module)}, {u"b"_s, coreFile(u"b.js"_s, module)}});
    QCOMPARE(m_hosting->asked, QStringList());
    QCOMPARE(valueOf(u"require('a').counter === require('b').counter"_s), u"true"_s);
    COScript::collectGarbage(); // nobody but the session owns the object
    QCOMPARE(valueOf(u"[require('a').next(), require('b').next()].join()"_s), u"1,2"_s);
    QCOMPARE(m_hosting->asked, QStringList{u"counter"_s});
}

void tst_COScript_Hosting::aServiceEndsWithItsSession()
{
    m_hosting->services = {
        {u"counter"_s, [&] { return QVariant::fromValue(ScriptObjectPointer(std::make_shared<Counter>(m_gone))); }}};
    start({{u"a"_s, coreFile(u"a.js"_s, "require('host:counter')")}});
    m_session->run(u"require('a')"_s);
    QCOMPARE(m_gone, 0);
    QVERIFY(!m_hosting->host.lock()->isEnded());
    m_session->script->cleanup();
    QCOMPARE(m_gone, 1);
    QVERIFY(m_hosting->host.expired() || m_hosting->host.lock()->isEnded());
}

void tst_COScript_Hosting::filesOfCoreModulesAreTheirs()
{
    m_hosting->services = {{u"facts"_s, [] { return QVariant(7); }}};
    coreFile(u"part.js"_s, "module.exports = require('host:facts')");
    start({{u"core"_s, coreFile(u"core.js"_s, "module.exports = require('./part')")}});
    QCOMPARE(valueOf(u"require('core')"_s), u"7"_s);
}

void tst_COScript_Hosting::refusals_data()
{
    QTest::addColumn<QString>("expression");
    QTest::newRow("script") << u"require('host:facts')"_s;
    QTest::newRow("module of the plug-in") << u"require('./own')"_s;
    QTest::newRow("function of a core module that calls back") << u"require('core')(() => require('host:facts'))"_s;
}

void tst_COScript_Hosting::refusals()
{
    m_hosting->services = {{u"facts"_s, [] { return QVariant(7); }}};
    start({{u"core"_s, coreFile(u"core.js"_s, "module.exports = (callback) => callback()")}});
    m_session->write(u"own.js"_s, "module.exports = require('host:facts')");
    QFETCH(QString, expression);
    QCOMPARE(valueOf(expression),
        u"Cannot find module 'host:facts'. Services of the application are for its own modules; require the module that offers what you need."_s);
    QCOMPARE(m_hosting->asked, QStringList());
}

void tst_COScript_Hosting::aHostKeepsTheSessionRunning()
{
    m_hosting->services = {{u"facts"_s, [] { return QVariant(7); }}};
    start({{u"core"_s, coreFile(u"core.js"_s, "require('host:facts')")}});
    m_session->run(u"require('core')"_s);
    QVERIFY(!m_session->script->shouldKeepRunning());
    auto first = m_hosting->host.lock()->keepRunning();
    auto second = m_hosting->host.lock()->keepRunning();
    first.reset();
    QVERIFY(m_session->script->shouldKeepRunning());
    second.reset();
    QVERIFY(!m_session->script->shouldKeepRunning());

    auto late = m_hosting->host.lock()->keepRunning();
    m_session->script->cleanup();
    QVERIFY(!m_session->script->shouldKeepRunning());
    m_session.reset();
    late.reset(); // and calls nobody
}

void tst_COScript_Hosting::aHostPrintsAndKnowsItsSession()
{
    m_hosting->services = {{u"facts"_s, [] { return QVariant(7); }}};
    start({{u"core"_s, coreFile(u"core.js"_s, "require('host:facts')")}});
    m_session->run(u"require('core')"_s);
    const auto host = m_hosting->host.lock();
    host->print(u"said"_s);
    QCOMPARE(m_session->printed, QStringList{u"said"_s});
    QCOMPARE(host->name(), u"Tidy Layers"_s);
    QVERIFY(host->environment().value(u"scriptURL"_s).toUrl().path().endsWith(u"main.js"_s));
}

void tst_COScript_Hosting::mentions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("none") << u"function onRun() {}"_s << QStringList();
    QTest::newRow("empty") << u""_s << QStringList();
    QTest::newRow("call") << u"fetch('a')"_s << QStringList{u"fetch"_s};
    QTest::newRow("at the end") << u"typeof URL"_s << QStringList{u"URL"_s};
    QTest::newRow("longer name") << u"URLSearchParams"_s << QStringList{u"URLSearchParams"_s};
    QTest::newRow("part of a name") << u"prefetch(fetchAll, _fetch, fetch$, größefetch, fetchß, fetch2)"_s
                                    << QStringList();
    QTest::newRow("between white space of other scripts")
        << u"return\u00a0fetch(\u3000URL)"_s << QStringList{u"URL"_s, u"fetch"_s};
    QTest::newRow("private name") << u"this.#fetch"_s << QStringList();
    QTest::newRow("in a string") << u"globalThis['atob']"_s << QStringList{u"atob"_s};
    QTest::newRow("several") << u"new Request(new URL(a)), URL"_s << QStringList{u"Request"_s, u"URL"_s};
    QTest::newRow("after a digit") << u"1fetch"_s << QStringList();
}

void tst_COScript_Hosting::mentions()
{
    QFETCH(QString, text);
    for (int time = 0; time < 2; ++time) { // found, then remembered
        QStringList found;
        const auto globals = scriptGlobalsIn(text);
        for (std::size_t i = 0; i < globals.size(); ++i) {
            if (globals.test(i))
                found.append(scriptGlobalNames()[i].toString());
        }
        QTEST(found, "names");
    }
    QVERIFY(std::is_sorted(scriptGlobalNames().begin(), scriptGlobalNames().end()));
}

void tst_COScript_Hosting::globalsAreLoadedOnFirstUse()
{
    const auto file = coreFile(u"url.js"_s, "print('loaded'); exports.URL = class URL {}");
    m_hosting->globals = {{u"URL"_s, {file, u"URL"_s}}};
    start();
    m_session->run(u"function onRun() { return typeof URL + new URL().constructor.name + (URL === URL) }"_s);
    QCOMPARE(m_session->printed, QStringList());
    QCOMPARE(m_session->call(u"onRun"_s), QVariant(u"functionURLtrue"_s));
    QCOMPARE(m_session->printed, QStringList{u"loaded"_s});
    QCOMPARE(m_session->run(u"JSON.stringify(Object.getOwnPropertyDescriptor(globalThis, 'URL'))"_s),
        QVariant(uR"({"writable":true,"enumerable":false,"configurable":true})"_s));
    QCOMPARE(m_hosting->askedGlobals, (QStringList{u"URL"_s, u"URL"_s})); // whether it exists, and where it is
}

void tst_COScript_Hosting::globalsOfModules()
{
    const auto file = coreFile(u"whole.js"_s, "module.exports = {title: 'node'}");
    m_hosting->globals = {{u"process"_s, {file, {}}}};
    start({{u"process"_s, file}});
    m_session->write(u"own.js"_s, "module.exports = process.title");
    QCOMPARE(valueOf(u"require('./own')"_s), u"node"_s);
    QCOMPARE(valueOf(u"process === require('process')"_s), u"true"_s);
}

void tst_COScript_Hosting::globalsThatScriptsDeclare_data()
{
    QTest::addColumn<QString>("source");
    for (const auto &source : {u"var URL = 5; String(URL)"_s, u"const URL = 5; String(URL)"_s,
             u"let URL = 5; URL + ''"_s, u"URL = 5; String(URL)"_s, u"'use strict'; URL = 5; String(URL)"_s,
             u"this.URL = 5; String(URL)"_s, u"delete this.URL; typeof URL === 'undefined' ? '5' : ''"_s,
             u"function URL() { return 5 } String(URL())"_s, u"class URL { static five = 5 } String(URL.five)"_s})
        QTest::newRow(qPrintable(source)) << source;
}

void tst_COScript_Hosting::globalsThatScriptsDeclare()
{
    m_hosting->globals = {{u"URL"_s, {coreFile(u"url.js"_s, "print('loaded'); exports.URL = 1"), u"URL"_s}}};
    start();
    QFETCH(QString, source);
    QCOMPARE(m_session->run(source), QVariant(u"5"_s));
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Hosting::globalsWithoutAModule()
{
    start();
    QCOMPARE(valueOf(u"typeof URL + ('URL' in globalThis)"_s), u"undefinedfalse"_s);
    QCOMPARE(valueOf(u"new URL()"_s), u"Can't find variable: URL"_s);
    const auto bare = TestSession::make(*m_environment);
    QCOMPARE(bare->run(u"typeof fetch"_s), QVariant(u"undefined"_s));
}

void tst_COScript_Hosting::globalsThatFailToLoad()
{
    m_hosting->globals = {{u"URL"_s, {coreFile(u"url.js"_s, "throw new Error('broken')"), u"URL"_s}},
        {u"atob"_s, {fileURLFromPath(m_environment->path(u"missing.js"_s), FileKind::File), u"atob"_s}}};
    start();
    QCOMPARE(valueOf(u"new URL()"_s), u"broken"_s);
    QVERIFY(valueOf(u"atob('')"_s).startsWith(u"Cannot read module '"_s));
}

void tst_COScript_Hosting::pushedObjectsComeFirst()
{
    m_hosting->globals = {{u"process"_s, {coreFile(u"process.js"_s, "print('loaded')"), {}}}};
    start();
    m_session->script->pushObject(u"pushed"_s, u"process"_s);
    QCOMPARE(valueOf(u"process"_s), u"pushed"_s);
    QCOMPARE(m_session->printed, QStringList());
}

QTEST_GUILESS_MAIN(tst_COScript_Hosting)
#include "tst_coscript_hosting.moc"
