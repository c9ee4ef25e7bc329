// How long one run of a command takes through the manager (session, evaluation, set-up, handler, tear-down) beside bare
// calls of the engine that evaluate and call the same.

#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"
#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptString.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

QByteArray scriptOfSize(int size)
{
    QByteArray source;
    for (int i = 0; source.size() < size; ++i) {
        source += "function helper" + QByteArray::number(i)
            + "(layer, index) {\n    var name = layer.name + ' ' + index;\n    return name.length > 20 ? name.slice(0, "
              "20) : name;\n}\n";
    }
    return source
        + "function onSetUp(context) { helper0({name: 'a'}, 1); }\n"
          "function onRun(context) { return helper0({name: 'b'}, 2); }\n"
          "function onTearDown() { helper0({name: 'c'}, 3); }\n";
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// One plug-in with one command, loaded.
class Fixture
{
public:
    explicit Fixture(int scriptSize)
        : source(scriptOfSize(scriptSize))
        , manager({QUrl::fromLocalFile(m_folder.path())}, nullptr, nullptr)
    {
        const auto scripts = m_folder.filePath(QStringLiteral("Bench.korvanplugin/Contents/Korvan"));
        QDir().mkpath(scripts);
        scriptPath = scripts + QStringLiteral("/bench.js");
        write(scriptPath, source);
        write(scripts + QStringLiteral("/manifest.json"),
            R"({"identifier": "bench", "commands": [{"script": "bench.js", "identifier": "run"}]})");
        manager.reloadPlugins();
        command = manager.commandWithSpecifier({QStringLiteral("bench"), QStringLiteral("run")});
    }

private:
    QTemporaryDir m_folder;

public:
    QByteArray source;
    QString scriptPath;
    KRPluginManager manager;
    std::shared_ptr<KRPluginCommand> command;
};

/// Evaluates and calls the same functions with nothing around them.
void runBare(const QByteArray &source)
{
    static const ScriptString url("file:///tmp/bench.js");
    const auto context = JSGlobalContextCreateInGroup(ScriptEngine::instance().group(), nullptr);
    const ScriptString text{QStringView(QString::fromUtf8(source))};
    JSEvaluateScript(context, text.get(), nullptr, url.get(), 1, nullptr);
    const auto call = [context](const char *name, std::initializer_list<JSValueRef> arguments) {
        const auto function =
            JSObjectGetProperty(context, JSContextGetGlobalObject(context), ScriptString(name).get(), nullptr);
        JSObjectCallAsFunction(
            context, const_cast<JSObjectRef>(function), nullptr, arguments.size(), arguments.begin(), nullptr);
    };
    auto *const argument = JSObjectMake(context, nullptr, nullptr);
    call("onSetUp", {argument});
    call("onRun", {argument});
    call("onTearDown", {});
    JSGlobalContextRelease(context);
}

void unchangedSource(benchmark::State &state)
{
    Fixture fixture(int(state.range(0)));
    measureInterleaved(
        state, [&] { runBare(fixture.source); }, [&] { fixture.command->run({}, &fixture.manager); });
    if (fixture.command->returnValue() != QVariant(QStringLiteral("b 2")))
        state.SkipWithError("the handler did not run");
}

void changedSource(benchmark::State &state)
{
    Fixture fixture(int(state.range(0)));
    LTAppEnvironment::current().userDefaults().setOverrides({{QStringLiteral("AlwaysReloadScript"), true}});
    int version = 0;
    const auto changed = [&] { return fixture.source + "// " + QByteArray::number(++version); };
    // Writing the file is no part of either: both measure a source that the engine has never seen.
    measureInterleaved(
        state, [&] { runBare(changed()); }, [&] { fixture.command->run({}, &fixture.manager); },
        [&] { write(fixture.scriptPath, changed()); });
    LTAppEnvironment::current().userDefaults().setOverrides({});
}

} // namespace

BENCHMARK(unchangedSource)->Arg(2000)->Arg(40000)->Iterations(1500)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(changedSource)->Arg(2000)->Arg(40000)->Iterations(300)->UseManualTime()->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
