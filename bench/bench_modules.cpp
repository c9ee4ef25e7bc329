// What the core modules cost a session: those that require none of them, and the first require of each, beside that of
// a module whose file is empty.

#include "commands/CoreModules.h"
#include "commands/KRPluginCommand.h"
#include "platform/LTAppEnvironment.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <string>

namespace {

constexpr const char *moduleNames[] = {"buffer", "console", "events", "os", "path", "process", "querystring", "stream",
    "string_decoder", "timers", "util"};

class Environment final : public LTAppEnvironment
{
public:
    QUrl mainBundleResourcesFolder() const override
    {
        return QUrl::fromLocalFile(QStringLiteral(KORVAN_RESOURCES_FOLDER "/"));
    }

private:
    Installation m_installation{*this};
};

/// Makes sessions that know the application's core modules, and one more that does nothing.
class Sessions
{
public:
    Sessions()
        : m_modules(coreModulesOfApplication())
        , m_hosting(std::make_shared<KRPluginCommand>(nullptr, QStringLiteral("bench"), QStringLiteral("Bench"),
              QStringLiteral("onRun"), KRPluginCommand::Scope::Document))
    {
        QFile file(m_folder.filePath(QStringLiteral("empty.js")));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write");
        m_modules.insert(QStringLiteral("empty"), QUrl::fromLocalFile(file.fileName()));
    }

    std::unique_ptr<COScript> make() const
    {
        auto session = bare();
        session->setHosting(m_hosting);
        return session;
    }
    /// Without services and globals.
    std::unique_ptr<COScript> bare() const { return std::make_unique<COScript>(m_modules, QStringLiteral("bench")); }

private:
    QTemporaryDir m_folder;
    COScript::CoreModules m_modules;
    std::shared_ptr<KRPluginCommand> m_hosting;
};

QString require(const char *name)
{
    return QStringLiteral("void require('%1'); true").arg(QLatin1StringView(name));
}

void evaluate(benchmark::State &state, COScript &session, const QString &source)
{
    if (session.executeString(source) != QVariant(true))
        state.SkipWithError("the script did not come to its end");
}

/// Another session each time for either, made unmeasured.
void measureFirstUse(benchmark::State &state, const QString &source)
{
    const Sessions sessions;
    std::unique_ptr<COScript> floor;
    std::unique_ptr<COScript> ours;
    const auto empty = require("empty");
    measureInterleaved(
        state, [&] { evaluate(state, *floor, empty); }, [&] { evaluate(state, *ours, source); },
        [&] {
            floor = sessions.make();
            ours = sessions.make();
        });
}

void firstRequire(benchmark::State &state, const char *name)
{
    measureFirstUse(state, require(name));
}

void firstUse(benchmark::State &state, const char *global)
{
    measureFirstUse(state, QStringLiteral("typeof %1 === 'function'").arg(QLatin1StringView(global)));
}

void requireAll(benchmark::State &state)
{
    QString source;
    for (const char *const name : moduleNames)
        source += require(name) + u';';
    measureFirstUse(state,
        source
            + QStringLiteral(
                "void [fetch, URL, TextDecoder, structuredClone, performance]; typeof fetch === 'function'"));
}

void measureEach(const char *what, const char *name, void (*measure)(benchmark::State &, const char *))
{
    benchmark::RegisterBenchmark((std::string(what) + name).c_str(), measure, name)
        ->Iterations(100)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

/// The whole life of a session whose script has nothing to do with modules.
void withoutModules(benchmark::State &state)
{
    const Sessions sessions;
    QString source;
    while (source.size() < state.range(0))
        source +=
            QStringLiteral("function helper%1(layer, index) { return layer.name + ' ' + index; }\n").arg(source.size());
    source += QStringLiteral("helper0({ name: 'b' }, 2) === 'b 2'");
    measureInterleaved(
        state, [&] { evaluate(state, *sessions.bare(), source); }, [&] { evaluate(state, *sessions.make(), source); });
}

} // namespace

BENCHMARK(requireAll)->Iterations(100)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(withoutModules)->Arg(2000)->Arg(40000)->Iterations(1500)->UseManualTime()->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const Environment environment;
    for (const char *const name : moduleNames)
        measureEach("firstRequire/", name, &firstRequire);
    for (const char *const name : {"URL", "fetch", "structuredClone", "TextDecoder", "require('stream').Transform"})
        measureEach("firstUse/", name, &firstUse);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
