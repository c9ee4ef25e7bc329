#include "platform/script/ScriptCallTrace.h"

#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptValue.h"
#include "support/TestSession.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

class NamedObject final : public ScriptObject
{
public:
    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }

    const ScriptClass &scriptClass() const override
    {
        static constexpr ScriptOperation operations[] = {
            scriptOperation<&NamedObject::name>("name"),
            scriptOperation<&NamedObject::setName>("setName", "(name)"),
        };
        static constexpr ScriptClass description{"NamedObject", operations};
        return description;
    }

private:
    QString m_name;
};

class Recorder final : public ScriptCallObserver
{
public:
    void called(const ScriptCallRecord &call) override
    {
        const auto kind = call.kind == ScriptCallRecord::Kind::Get ? u"get "_s
            : call.kind == ScriptCallRecord::Kind::Set             ? u"set "_s
                                                                   : QString();
        calls.append(u"%1%2%3(%4) %5"_s.arg(QString(call.depth, u'>'), kind, call.name, call.arguments.join(u", "_s),
            call.hasFailed ? u"failed"_s : call.result));
        isTimed = isTimed && call.duration.count() >= 0;
    }

    QStringList calls;
    bool isTimed = true;
};

} // namespace

class tst_ScriptCallTrace : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_environment = std::make_unique<TestEnvironment>();
        m_session = TestSession::make(*m_environment);
    }
    void cleanup()
    {
        m_session.reset();
        m_environment.reset();
    }

    void functions_data();
    void functions();
    void nestedCalls();
    void dictionaries();
    void operations();
    void nobodyListens();

private:
    void push(const QString &name, std::function<QVariant(const QVariantList &)> function)
    {
        m_session->script->pushObject(QVariant::fromValue(NativeFunction{std::move(function)}), name);
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

void tst_ScriptCallTrace::functions_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing") << u"echo()"_s << u"NativeFunction() "_s;
    QTest::newRow("plain values") << u"echo('a', 1.5, true, null, undefined)"_s
                                  << u"NativeFunction(\"a\", 1.5, true, null, undefined) \"a\""_s;
    QTest::newRow("others") << u"echo({ toString() { throw 1 } }, [1], () => 1, Symbol('a'))"_s
                            << u"NativeFunction({…}, […], function, symbol) {…}"_s;
    QTest::newRow("a long text") << u"echo('a'.repeat(61)).length"_s
                                 << u"NativeFunction(\"%1…\") \"%1…\""_s.arg(QString(60, u'a'));
    QTest::newRow("one that fails") << u"try { fail(1) } catch {}"_s << u"NativeFunction(1) failed"_s;
}

void tst_ScriptCallTrace::functions()
{
    QFETCH(const QString, call);
    push(u"echo"_s, [](const QVariantList &values) { return values.value(0); });
    push(u"fail"_s, [](const QVariantList &) -> QVariant { throw ScriptException(u"no"_s); });
    Recorder recorder;
    m_session->run(call);
    QCOMPARE(m_session->exceptions, QStringList());
    QTEST(recorder.calls.join(u'|'), "expected");
    QVERIFY(recorder.isTimed);
}

void tst_ScriptCallTrace::nestedCalls()
{
    push(u"call"_s, [](const QVariantList &values) { return values.value(0).value<ScriptValue>().call({}); });
    push(u"inner"_s, [](const QVariantList &) { return QVariant(2); });
    Recorder recorder;
    m_session->run(u"call(() => inner()); inner()"_s);
    QCOMPARE(recorder.calls,
        QStringList({u">NativeFunction() 2"_s, u"NativeFunction(function) 2"_s, u"NativeFunction() 2"_s}));
}

void tst_ScriptCallTrace::dictionaries()
{
    const auto dictionary = std::make_shared<ScriptDictionary>(QVariantMap{{u"a"_s, 1}});
    m_session->script->pushObject(QVariant::fromValue(dictionary), u"context"_s);
    Recorder recorder;
    m_session->run(u"context.a; context.b = 'c'; context.missing"_s);
    QCOMPARE(recorder.calls, QStringList({u"get Dictionary.a() 1"_s, u"set Dictionary.b(\"c\") "_s}));
    QCOMPARE(dictionary->value(u"b"_s), QVariant(u"c"_s));
}

void tst_ScriptCallTrace::operations()
{
    const auto object = std::make_shared<NamedObject>();
    m_session->script->pushObject(QVariant::fromValue(ScriptObjectPointer(object)), u"object"_s);
    Recorder recorder;
    m_session->run(u"object.setName('Moon'); object.name()"_s);
    QCOMPARE(recorder.calls, QStringList({u"NamedObject.setName(\"Moon\") "_s, u"NamedObject.name() \"Moon\""_s}));
}

void tst_ScriptCallTrace::nobodyListens()
{
    push(u"inner"_s, [](const QVariantList &) { return QVariant(2); });
    {
        const Recorder recorder;
        QCOMPARE(ScriptCallObserver::current(), &recorder);
    }
    QVERIFY(!ScriptCallObserver::current());
    QCOMPARE(m_session->run(u"inner()"_s), QVariant(2));
}

QTEST_GUILESS_MAIN(tst_ScriptCallTrace)
#include "tst_scriptcalltrace.moc"
