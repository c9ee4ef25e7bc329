// Values on their way between scripts and C++.

#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptDictionary.h"
#include "platform/script/ScriptValue.h"
#include "support/TestSession.h"

#include <QDateTime>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// An object that scripts can see.
class Layer final : public ScriptObject
{
public:
    const ScriptClass &scriptClass() const override;

    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    int multiply(int factor, int by) const { return factor * by; }

private:
    QString m_name = u"Sky"_s;
};

constexpr ScriptOperation layerOperations[] = {
    scriptOperation<&Layer::name>("name"),
    scriptOperation<&Layer::setName>("setName", "(name)"),
    scriptOperation<&Layer::multiply>("multiply_by", "(factor, by)"),
};
constexpr ScriptClass layerClass{"Layer", layerOperations};

const ScriptClass &Layer::scriptClass() const
{
    return layerClass;
}

QVariant visible(const std::shared_ptr<ScriptObject> &object)
{
    return QVariant::fromValue(ScriptObjectPointer(object));
}

} // namespace

class tst_COScript_Values : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void scriptToHost_data();
    void scriptToHost();
    void numberToHostIsExact_data();
    void numberToHostIsExact();
    void hostToScript_data();
    void hostToScript();
    void textsSurviveBothWays_data();
    void textsSurviveBothWays();
    void arraysCrossBothWays();
    void bigIntegersComeBackAsThemselves_data();
    void bigIntegersComeBackAsThemselves();
    void cyclesEnd_data();
    void cyclesEnd();
    void hostileObjectsAreErrorsOfTheScript_data();
    void hostileObjectsAreErrorsOfTheScript();

    void functionIsACallback();
    void callbackThrows();
    void callbackOfAnEndedSession();
    void hostFunction();
    void hostFunctionThrows();

    void objectHasItsOperations();
    void objectHasOneWrapper();
    void objectComesBackAsItself();
    void objectThatDied();
    void operationsRejectForeignReceivers();
    void dictionaryIsLive();

private:
    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

void tst_COScript_Values::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_session = TestSession::make(*m_environment);
}

void tst_COScript_Values::cleanup()
{
    m_session.reset();
    m_environment.reset();
}

void tst_COScript_Values::scriptToHost_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QVariant>("value");

    const auto row = [](const char *tag, const QString &source, const QVariant &value) {
        QTest::newRow(tag) << source << value;
    };
    row("undefined is nil", u"undefined"_s, {});
    row("null", u"null"_s, QVariant::fromValue(nullptr));
    row("true", u"true"_s, true);
    row("false", u"false"_s, false);
    row("text", u"'Sky'"_s, u"Sky"_s);
    row("empty text is not nil", u"''"_s, u""_s);
    row("array", u"[1, 'a', null]"_s, QVariantList{1, u"a"_s, QVariant::fromValue(nullptr)});
    row("array with holes", u"[1,,3]"_s, QVariantList{1, {}, 3});
    row("empty array", u"[]"_s, QVariantList());
    row("object", u"({a: 1, b: {c: [true]}})"_s,
        QVariantMap{{u"a"_s, 1}, {u"b"_s, QVariantMap{{u"c"_s, QVariantList{true}}}}});
    row("object without prototype", u"Object.assign(Object.create(null), {a: 1})"_s, QVariantMap{{u"a"_s, 1}});
    row("date", u"new Date(86400000)"_s, QDateTime::fromMSecsSinceEpoch(86400000, Qt::UTC));
    row("bytes", u"new Uint8Array([1, 0, 255])"_s, QByteArray("\x01\x00\xFF", 3));
    row("part of a buffer", u"new Uint8Array(new Uint8Array([1, 2, 3, 4]).buffer, 1, 2)"_s, QByteArray("\x02\x03"));
    row("whole buffer", u"new Uint8Array([7, 8]).buffer"_s, QByteArray("\x07\x08"));
}

void tst_COScript_Values::scriptToHost()
{
    QFETCH(QString, source);
    QFETCH(QVariant, value);
    const auto result = m_session->run(source);
    if (value.typeId() == QMetaType::QDateTime) {
        QCOMPARE(result.toDateTime().toUTC(), value.toDateTime());
        return;
    }
    QCOMPARE(result, value);
    QCOMPARE(result.isValid(), value.isValid());
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Values::numberToHostIsExact_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<double>("number");
    QTest::newRow("zero") << u"0"_s << 0.0;
    QTest::newRow("fraction") << u"0.1"_s << 0.1;
    QTest::newRow("largest safe integer") << u"Number.MAX_SAFE_INTEGER"_s << 9007199254740991.0;
    QTest::newRow("smallest safe integer") << u"Number.MIN_SAFE_INTEGER"_s << -9007199254740991.0;
    QTest::newRow("beyond 32 bits") << u"4294967296"_s << 4294967296.0;
    QTest::newRow("beyond 64 bits") << u"1e300"_s << 1e300;
    QTest::newRow("smallest") << u"5e-324"_s << 5e-324;
    QTest::newRow("infinity") << u"-Infinity"_s << -std::numeric_limits<double>::infinity();
}

void tst_COScript_Values::numberToHostIsExact()
{
    QFETCH(QString, source);
    QTEST(m_session->run(source).toDouble(), "number");
    QVERIFY(std::isnan(m_session->run(u"NaN"_s).toDouble()));
}

void tst_COScript_Values::hostToScript_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("check");

    const auto row = [](const char *tag, const QVariant &value, const QString &check) {
        QTest::newRow(tag) << value << check;
    };
    row("nil is undefined", {}, u"value === undefined"_s);
    row("null", QVariant::fromValue(nullptr), u"value === null"_s);
    row("boolean", true, u"value === true"_s);
    row("integer", 7, u"value === 7"_s);
    row("64 bits that fit", qlonglong(9007199254740991), u"value === Number.MAX_SAFE_INTEGER"_s);
    row("unsigned 64 bits that fit", qulonglong(9007199254740991), u"value === Number.MAX_SAFE_INTEGER"_s);
    row("64 bits that do not fit are a number", qlonglong(9007199254740992), u"value === 2 ** 53"_s);
    row("the lowest 64 bits are a number", std::numeric_limits<qlonglong>::min(), u"value === -(2 ** 63)"_s);
    row("unsigned 64 bits that do not fit are a number", std::numeric_limits<qulonglong>::max(),
        u"value === 2 ** 64"_s);
    row("fraction", 0.1, u"value === 0.1"_s);
    row("text", u"Sky"_s, u"value === 'Sky'"_s);
    row("empty text", u""_s, u"value === ''"_s);
    row("text that is null in Qt is still a text", QString(), u"value === ''"_s);
    row("list", QVariantList{1, u"a"_s}, u"Array.isArray(value) && value[0] === 1 && value[1] === 'a'"_s);
    row("texts", QStringList{u"a"_s, u"b"_s}, u"value.join() === 'a,b'"_s);
    row("dictionary", QVariantMap{{u"a"_s, QVariantList{true}}}, u"value.a[0] === true"_s);
    row("date", QDateTime::fromMSecsSinceEpoch(5, Qt::UTC), u"value instanceof Date && value.getTime() === 5"_s);
    row("bytes", QByteArray("\x01\x00\xFF", 3), u"value instanceof Uint8Array && value.join() === '1,0,255'"_s);
    row("URL", QUrl(u"https://example.com/%C3%BC"_s), u"String(value) === 'https://example.com/%C3%BC'"_s);
}

void tst_COScript_Values::hostToScript()
{
    QFETCH(QVariant, value);
    QFETCH(QString, check);
    m_session->run(u"function test(value) { return "_s + check + u" }"_s);
    QCOMPARE(m_session->call(u"test"_s, {value}), QVariant(true));
    m_session->script->pushObject(value, u"value"_s);
    QCOMPARE(m_session->run(check), QVariant(true));
}

void tst_COScript_Values::textsSurviveBothWays_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("NUL") << u"a\0b"_s;
    QTest::newRow("outside of the basic plane") << u"\U0001F600"_s;
    QTest::newRow("lone surrogate") << QString(QChar(0xD800));
    QTest::newRow("byte-order mark") << u"\uFEFFa"_s;
    QTest::newRow("line separators") << u"a\u2028b\r\nc"_s;
    QTest::newRow("a million characters") << QString(1000000, u'ü');
}

void tst_COScript_Values::textsSurviveBothWays()
{
    QFETCH(QString, text);
    m_session->run(u"function same(text) { return text }"_s);
    QCOMPARE(m_session->call(u"same"_s, {text}), QVariant(text));
    QCOMPARE(m_session->call(u"same"_s, {QVariantMap{{text, 1}}}).value<ScriptValue>().toVariant(), QVariant());
    m_session->run(u"function key(object) { return Object.keys(object)[0] }"_s);
    QCOMPARE(m_session->call(u"key"_s, {QVariantMap{{text, 1}}}), QVariant(text));
}

void tst_COScript_Values::arraysCrossBothWays()
{
    m_session->run(u"function twice(list) { return [...list, ...list] }"_s);
    const QVariantList list{1, u"a"_s};
    QCOMPARE(m_session->call(u"twice"_s, {QVariant(list)}), QVariant(QVariantList{1, u"a"_s, 1, u"a"_s}));
}

void tst_COScript_Values::bigIntegersComeBackAsThemselves_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("description");
    QTest::newRow("small") << u"10n"_s << u"10n"_s;
    QTest::newRow("beyond every number") << u"2n ** 63n + 1n"_s << u"9223372036854775809n"_s;
    QTest::newRow("array of them") << u"new BigInt64Array([1n, 2n])"_s << u"BigInt64Array {\"0\": 1n, \"1\": 2n}"_s;
    QTest::newRow("array of unsigned ones")
        << u"new BigUint64Array([1n, 2n])"_s << u"BigUint64Array {\"0\": 1n, \"1\": 2n}"_s;
}

void tst_COScript_Values::bigIntegersComeBackAsThemselves()
{
    QFETCH(QString, source);
    const auto value = m_session->run(u"var first = "_s + source + u"; first"_s);
    QCOMPARE(value.metaType(), QMetaType::fromType<ScriptValue>());
    QTEST(value.value<ScriptValue>().description(), "description");
    m_session->script->pushObject(value, u"second"_s);
    QCOMPARE(m_session->run(u"first === second"_s), QVariant(true));
}

void tst_COScript_Values::cyclesEnd_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("array in itself") << u"var a = []; a.push(a); a"_s;
    QTest::newRow("object in itself") << u"var o = {}; o.deeper = {o}; o"_s;
    QTest::newRow("nested too deeply") << u"var o = {}; for (let i = 0; i < 1e5; ++i) o = {o}; o"_s;
    QTest::newRow("list nested too deeply") << u"var a = []; for (let i = 0; i < 1e5; ++i) a = [a]; a"_s;
}

void tst_COScript_Values::cyclesEnd()
{
    QFETCH(QString, source);
    QVERIFY(m_session->run(source).isValid());
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_Values::hostileObjectsAreErrorsOfTheScript_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("getter that throws") << u"({get a() { throw new Error('no') }})"_s;
    QTest::newRow("proxy whose keys throw") << u"new Proxy({}, {ownKeys() { throw new Error('no') }})"_s;
    QTest::newRow("element that throws")
        << u"Object.defineProperty([1], 0, {get() { throw new Error('no') }, enumerable: true})"_s;
}

void tst_COScript_Values::hostileObjectsAreErrorsOfTheScript()
{
    QFETCH(QString, source);
    QCOMPARE(m_session->run(source), QVariant());
    QCOMPARE(m_session->exceptions, QStringList{u"Error: no"_s});
    QCOMPARE(m_session->printed.size(), 1);
}

void tst_COScript_Values::functionIsACallback()
{
    const auto function = m_session->run(u"(function add(a, b) { return a + b })"_s).value<ScriptValue>();
    QCOMPARE(function.kind(), ScriptValue::Kind::Function);
    QCOMPARE(function.description(), u"[Function: add]"_s);
    QCOMPARE(function.call({1, 2}), QVariant(3));
}

void tst_COScript_Values::callbackThrows()
{
    const auto function = m_session->run(u"(() => { throw new Error('late') })"_s).value<ScriptValue>();
    QCOMPARE(function.call({}), QVariant());
    QCOMPARE(m_session->exceptions, QStringList{u"Error: late"_s});
    QCOMPARE(m_session->printed.size(), 1);
    QVERIFY(m_session->printed[0].startsWith(u"error: Error: late\n"_s));
}

void tst_COScript_Values::callbackOfAnEndedSession()
{
    const auto function = m_session->run(u"(() => print('called'))"_s).value<ScriptValue>();
    QVERIFY(function.isAlive());
    m_session->script->cleanup();
    QVERIFY(!function.isAlive());
    QCOMPARE(function.call({}), QVariant());
    QCOMPARE(function.description(), u""_s);
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Values::hostFunction()
{
    const NativeFunction sum{[](const QVariantList &numbers) {
        double total = 0;
        for (const auto &number : numbers)
            total += number.toDouble();
        return QVariant(total);
    }};
    m_session->script->pushObject(QVariant::fromValue(sum), u"sum"_s);
    QCOMPARE(m_session->run(u"typeof sum + sum(1, 2, 3)"_s), QVariant(u"function6"_s));
}

void tst_COScript_Values::hostFunctionThrows()
{
    const NativeFunction fail{[](const QVariantList &) -> QVariant { throw ScriptException(u"no such layer"_s); }};
    m_session->script->pushObject(QVariant::fromValue(fail), u"fail"_s);
    QCOMPARE(m_session->run(u"try { fail() } catch (error) { error instanceof Error ? error.message : 'odd' }"_s),
        QVariant(u"no such layer"_s));
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_Values::objectHasItsOperations()
{
    const auto layer = std::make_shared<Layer>();
    m_session->script->pushObject(visible(layer), u"layer"_s);
    QCOMPARE(m_session->run(u"layer.setName('Sea'); layer.name() + layer.multiply_by(6, 7)"_s), QVariant(u"Sea42"_s));
    QCOMPARE(layer->name(), u"Sea"_s);
    QCOMPARE(m_session->run(u"typeof layer.destroy"_s), QVariant(u"undefined"_s));
}

void tst_COScript_Values::objectHasOneWrapper()
{
    const auto layer = std::make_shared<Layer>();
    m_session->script->pushObject(visible(layer), u"first"_s);
    m_session->script->pushObject(visible(layer), u"second"_s);
    QCOMPARE(m_session->run(u"first.note = 1; first === second && second.note === 1"_s), QVariant(true));
    const auto other = std::make_shared<Layer>();
    m_session->script->pushObject(visible(other), u"third"_s);
    QCOMPARE(m_session->run(u"first === third"_s), QVariant(false));
}

void tst_COScript_Values::objectComesBackAsItself()
{
    const auto layer = std::make_shared<Layer>();
    m_session->run(u"function same(value) { return value }"_s);
    QCOMPARE(m_session->call(u"same"_s, {visible(layer)}).value<ScriptObjectPointer>(), layer);
}

void tst_COScript_Values::objectThatDied()
{
    auto layer = std::make_shared<Layer>();
    m_session->script->pushObject(visible(layer), u"layer"_s);
    m_session->run(u"var kept = layer"_s);
    layer.reset();
    QCOMPARE(m_session->run(u"try { kept.name() } catch (error) { error.message }"_s),
        QVariant(u"This Layer no longer exists."_s));
}

void tst_COScript_Values::operationsRejectForeignReceivers()
{
    const auto layer = std::make_shared<Layer>();
    m_session->script->pushObject(visible(layer), u"layer"_s);
    const auto attempt = [this](const QString &call) {
        return m_session->run(u"try { "_s + call + u"; 'called' } catch (error) { 'refused' }"_s).toString();
    };
    QCOMPARE(attempt(u"layer.name.call({})"_s), u"refused"_s);
    QCOMPARE(attempt(u"layer.name.call(undefined)"_s), u"refused"_s);
    QCOMPARE(attempt(u"layer.name.call(Object.create(layer))"_s), u"refused"_s);
    QCOMPARE(attempt(u"layer.name.call(new Proxy(layer, {}))"_s), u"refused"_s);
    QCOMPARE(attempt(u"layer.name.call(layer)"_s), u"called"_s);
}

void tst_COScript_Values::dictionaryIsLive()
{
    const auto dictionary = std::make_shared<ScriptDictionary>(QVariantMap{{u"a"_s, 1}});
    m_session->script->pushObject(QVariant::fromValue(dictionary), u"context"_s);
    QCOMPARE(m_session->run(u"context.b = context.a + 1; delete context.a; Object.keys(context).join()"_s),
        QVariant(u"b"_s));
    QCOMPARE(dictionary->value(u"b"_s), QVariant(2));
    dictionary->clear();
    QCOMPARE(m_session->run(u"Object.keys(context).length + typeof context.b"_s), QVariant(u"0undefined"_s));
}

QTEST_GUILESS_MAIN(tst_COScript_Values)
#include "tst_coscript_values.moc"
