// Sessions are cheap, and leave nothing behind.

#include "platform/script/JavaScriptCorePrivate.h"
#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptString.h"
#include "platform/script/ScriptValue.h"
#include "support/FakeCommandManager.h"
#include "support/TestPlugin.h"
#include "support/TestSession.h"

#include <QFile>
#include <QtTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isMemoryOurOwn = false; // the sanitizer keeps what was freed
constexpr int runCount = 300;
#else
constexpr bool isMemoryOurOwn = true;
constexpr int runCount = 10000;
#endif

qint64 residentBytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

/// The contexts that the engine holds after everything was collected that can be.
int contextCount()
{
    COScript::collectGarbage();
    const auto context = ScriptEngine::instance().context();
    auto *const statistics = JavaScriptCorePrivate::entryPoints().memoryStatistics(context);
    const ScriptString name("globalObjectCount");
    return int(JSValueToNumber(context, JSObjectGetProperty(context, statistics, name.get(), nullptr), nullptr));
}

/// What the memory grows by after the first tenth of many runs.
qint64 growthAfterFirstRuns(KRPluginCommand &command, FakeCommandManager &manager)
{
    qint64 early = 0;
    for (int i = 1; i <= runCount; ++i) {
        command.run({}, &manager);
        if (i % (runCount / 10) == 0)
            COScript::collectGarbage();
        if (i == runCount / 10)
            early = residentBytes();
    }
    return residentBytes() - early;
}

} // namespace

class tst_COScript_Memory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void runsOfOneCommand();
    void contextsAreDestroyed_data();
    void contextsAreDestroyed();

private:
    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_COScript_Memory::init()
{
    m_environment = std::make_unique<TestEnvironment>();
}

void tst_COScript_Memory::cleanup()
{
    m_environment.reset();
}

void tst_COScript_Memory::runsOfOneCommand()
{
    const TestPlugin plugin(*m_environment, R"(
        const names = new Map();
        function onSetUp(context) { context.started = Date.now(); }
        function onRun(context) {
            console.log('running', context.command.identifier());
            setTimeout(() => names.clear(), 1);
            for (let i = 0; i < 100; ++i)
                names.set('layer ' + i, { i, next: [i] });
            return names.size;
        }
        function onTearDown() { print(names.size); })");
    FakeCommandManager manager;
    const auto command = plugin.command();
    constexpr qint64 allowed = 5 * 1024 * 1024;
    // On a busy machine the engine's compiler threads come late, with memory of their own: once. A leak shows in every
    // round.
    constexpr int rounds = isMemoryOurOwn ? 3 : 1;
    qint64 growth = 0;
    for (int round = 0; round < rounds; ++round) {
        growth = growthAfterFirstRuns(*command, manager);
        if (growth <= allowed)
            break;
    }
    QCOMPARE(command->returnValue(), QVariant(100));
    if (isMemoryOurOwn)
        QVERIFY2(growth <= allowed, qPrintable(u"%1 bytes more"_s.arg(growth)));
}

void tst_COScript_Memory::contextsAreDestroyed_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("error") << u"throw new Error('x')"_s;
    QTest::newRow("syntax error") << u"function ("_s;
    QTest::newRow("timer that is still waiting") << u"setInterval(() => {}, 1000)"_s;
    QTest::newRow("promise that never settles") << u"function f() { return new Promise(() => {}) }"_s;
    QTest::newRow("rejection") << u"Promise.reject(1)"_s;
    QTest::newRow("module") << u"require('./a')"_s;
    QTest::newRow("callback kept by C++") << u"keep(() => keep)"_s;
    QTest::newRow("object of C++ with a property") << u"session.self = session; globalThis.kept = session"_s;
    QTest::newRow("values printed") << u"print({a: () => 1}); console.log([class {}])"_s;
    QTest::newRow("stopped") << u"for (;;);"_s;
}

void tst_COScript_Memory::contextsAreDestroyed()
{
    QFETCH(QString, source);
    const auto before = contextCount();
    QVariant kept;
    for (int i = 0; i < 20; ++i) {
        const auto session = TestSession::make(*m_environment);
        session->script->setTimeLimit(0.02);
        session->write(u"a.js"_s, "exports.f = () => require");
        const NativeFunction keep{[&kept](const QVariantList &values) {
            kept = values.value(0);
            return kept;
        }};
        session->script->pushObject(QVariant::fromValue(keep), u"keep"_s);
        session->script->pushObject(QVariantMap{{u"a"_s, QVariantList{1}}}, u"session"_s);
        session->run(source);
        session->call(u"f"_s);
        QVERIFY(contextCount() > before); // the count counts
    }
    // The collector also looks at the machine's stack, where the latest one's address may still lie.
    QVERIFY2(contextCount() <= before + 1, qPrintable(u"%1 of 20 are left"_s.arg(contextCount() - before)));
}

QTEST_GUILESS_MAIN(tst_COScript_Memory)
#include "tst_coscript_memory.moc"
