// How fast a script calls a declared C++ operation and gets its answer, beside a bare callback of the engine that does
// the same. The ratio here is of rates: 1 is as fast as the bare callback.

#include "platform/script/COScript.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptObject.h"
#include "platform/script/ScriptString.h"
#include "support/Interleaved.h"

#include <QCoreApplication>

namespace {

constexpr int callsPerRound = 1'000'000;

class Target final : public ScriptObject
{
public:
    int number() const { return 5; }
    QString text() const { return m_text; }
    void setNumber(double) { }

    const ScriptClass &scriptClass() const override
    {
        static constexpr ScriptOperation operations[] = {
            scriptOperation<&Target::number>("number"),
            scriptOperation<&Target::text>("text"),
            scriptOperation<&Target::setNumber>("setNumber", "(number)"),
        };
        static constexpr ScriptClass scriptClass{"Target", operations};
        return scriptClass;
    }

private:
    QString m_text = QStringLiteral("com.example.tidy");
};

JSValueRef bareNumber(JSContextRef context, JSObjectRef, JSObjectRef, size_t, const JSValueRef[], JSValueRef *)
{
    return JSValueMakeNumber(context, 5);
}

JSValueRef bareText(JSContextRef context, JSObjectRef, JSObjectRef, size_t, const JSValueRef[], JSValueRef *)
{
    static const auto text = QStringLiteral("com.example.tidy");
    return JSValueMakeString(context, ScriptString(QStringView(text)).get());
}

JSValueRef bareSetNumber(
    JSContextRef context, JSObjectRef, JSObjectRef, size_t, const JSValueRef arguments[], JSValueRef *exception)
{
    benchmark::DoNotOptimize(JSValueToNumber(context, arguments[0], exception));
    return JSValueMakeUndefined(context);
}

/// A bare context whose global "target" has the callbacks.
class BareTarget
{
public:
    BareTarget()
        : m_context(JSGlobalContextCreateInGroup(ScriptEngine::instance().group(), nullptr))
        , m_target(JSObjectMake(m_context, nullptr, nullptr))
    {
        add("number", bareNumber);
        add("text", bareText);
        add("setNumber", bareSetNumber);
        JSObjectSetProperty(
            m_context, JSContextGetGlobalObject(m_context), ScriptString("target").get(), m_target, 0, nullptr);
    }
    ~BareTarget() { JSGlobalContextRelease(m_context); }

    void evaluate(const QString &source)
    {
        JSEvaluateScript(m_context, ScriptString(QStringView(source)).get(), nullptr, nullptr, 1, nullptr);
    }

private:
    void add(const char *name, JSObjectCallAsFunctionCallback callback)
    {
        const ScriptString text(name);
        JSObjectSetProperty(m_context, m_target, text.get(),
            JSObjectMakeFunctionWithCallback(m_context, text.get(), callback), 0, nullptr);
    }

    JSGlobalContextRef m_context;
    JSObjectRef m_target;
};

void calls(benchmark::State &state, const QString &call)
{
    const auto loop = QStringLiteral("for (let i = 0; i < %1; ++i) { %2; }").arg(QString::number(callsPerRound), call);
    BareTarget bare;
    const auto target = std::make_shared<Target>();
    COScript session({}, QStringLiteral("bench"));
    session.pushObject(QVariant::fromValue(ScriptObjectPointer(target)), QStringLiteral("target"));
    measureInterleaved(
        state, [&] { bare.evaluate(loop); }, [&] { session.executeString(loop); });
    state.counters["rate_ratio"] = 1 / double(state.counters["ratio"]);
    state.counters["ns_per_call"] = double(state.counters["ours_us"]) * 1000 / callsPerRound;
}

} // namespace

BENCHMARK_CAPTURE(calls, number, QStringLiteral("target.number()"))->Iterations(15)->UseManualTime();
BENCHMARK_CAPTURE(calls, text, QStringLiteral("target.text()"))->Iterations(15)->UseManualTime();
BENCHMARK_CAPTURE(calls, setNumber, QStringLiteral("target.setNumber(i)"))->Iterations(15)->UseManualTime();

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
