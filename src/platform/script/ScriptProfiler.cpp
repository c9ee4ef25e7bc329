#include "platform/script/ScriptProfiler.h"

#include "platform/FileURL.h"
#include "platform/JSONText.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/script/CPUProfile.h"
#include "platform/script/JavaScriptCorePrivate.h"
#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptLocations.h"
#include "platform/script/ScriptString.h"

#include <QVariantList>

namespace {

constexpr qint64 usualInterval = 1000;
/// Often enough to keep what the engine gathers small.
constexpr std::chrono::seconds collectingInterval(1);

ScriptLocations *currentLocations = nullptr;

int placeNumber(const QVariantMap &frame, const QString &key)
{
    const auto number = frame.value(key).toDouble();
    return number >= 1 && number <= 1e9 ? int(number) : 0;
}

QString functionOf(const QVariantMap &frame)
{
    return frame.value(QStringLiteral("sourceID")).toString() + u' ' + frame.value(QStringLiteral("name")).toString();
}

/// "#C0Y34G" of "#C0Y34G:DFG:bc#11"; empty when it is not known.
QString codeOf(const QVariantMap &frame)
{
    const auto code = frame.value(QStringLiteral("location")).toString().section(u':', 0, 0);
    return code == u"#<nil>" ? QString() : code;
}

/// A whole path as a URL, which viewers open.
QString urlOf(const QString &file)
{
    return file.startsWith(u'/') ? absoluteString(fileURLFromPath(file, FileKind::File)) : file;
}

} // namespace

struct ScriptProfiler::State
{
    /// With no folder that files are named from, so that they have whole paths.
    ScriptLocations locations;
    CPUProfile profile{usualInterval};
    QHash<qint64, QString> urls;
    /// The latest code of a function of that source and name.
    QHash<QString, QString> codes;
    std::unique_ptr<ScheduledCall> next;

    void add(const QVariantMap &samples);
    QList<CPUProfile::Call> callsOf(const QVariantList &frames);
    void noteCode(const QVariantMap &frame);
    QString identityOf(const QVariantMap &frame) const;
    CPUProfile::Call callOf(const QVariantMap &frame, QString &nameOfCalled);
};

ScriptLocations *ScriptProfiler::locations()
{
    return currentLocations;
}

std::unique_ptr<ScriptProfiler> ScriptProfiler::start()
{
    const auto &engine = JavaScriptCorePrivate::entryPoints();
    if (!engine.enableSamplingProfiler || !engine.disableSamplingProfiler || !engine.takeSamples)
        return nullptr;
    if (!engine.enableSamplingProfiler(ScriptEngine::instance().group()))
        return nullptr;
    return std::unique_ptr<ScriptProfiler>(new ScriptProfiler);
}

ScriptProfiler::ScriptProfiler()
    : m_state(std::make_unique<State>())
{
    currentLocations = &m_state->locations;
    collectLater();
}

ScriptProfiler::~ScriptProfiler()
{
    currentLocations = nullptr;
    JavaScriptCorePrivate::entryPoints().disableSamplingProfiler(ScriptEngine::instance().group());
}

void ScriptProfiler::collectLater()
{
    m_state->next = LTAppEnvironment::current().mainQueue().callAfter(collectingInterval, [this] {
        collect();
        collectLater();
    });
}

void ScriptProfiler::collect()
{
    auto *const samples = JavaScriptCorePrivate::entryPoints().takeSamples(ScriptEngine::instance().group());
    if (!samples)
        return;
    const auto parsed = variantFromJSON(ScriptString::adopt(samples).toQString().toUtf8());
    if (parsed)
        m_state->add(parsed.value().toMap());
}

QByteArray ScriptProfiler::profile()
{
    collect();
    return m_state->profile.toJSON();
}

void ScriptProfiler::State::add(const QVariantMap &samples)
{
    const auto sources = samples.value(QStringLiteral("sources")).toList();
    for (const auto &element : sources) {
        const auto source = element.toMap();
        urls.insert(
            source.value(QStringLiteral("sourceID")).toLongLong(), source.value(QStringLiteral("url")).toString());
    }
    const auto traces = samples.value(QStringLiteral("traces")).toList();
    for (const auto &trace : traces) {
        const auto frames = trace.toMap().value(QStringLiteral("frames")).toList();
        for (const auto &frame : frames)
            noteCode(frame.toMap());
    }
    for (const auto &element : traces) {
        const auto trace = element.toMap();
        const auto seconds = trace.value(QStringLiteral("timestamp")).toDouble();
        profile.add(qint64(seconds * 1e6), callsOf(trace.value(QStringLiteral("frames")).toList()));
    }
}

QList<CPUProfile::Call> ScriptProfiler::State::callsOf(const QVariantList &frames)
{
    QList<CPUProfile::Call> calls;
    for (const auto &frame : frames) {
        QString nameOfCalled;
        const auto call = callOf(frame.toMap(), nameOfCalled);
        // A generated function's own name is told by whoever calls it.
        if (!nameOfCalled.isEmpty() && !calls.isEmpty() && !calls.first().url.isEmpty())
            calls.first().originalName = nameOfCalled;
        calls.prepend(call);
    }
    // What enters the engine is a function of ours.
    if (!calls.isEmpty() && calls.first().url.isEmpty() && calls.first().function == u"anonymous")
        calls.removeFirst();
    return calls;
}

void ScriptProfiler::State::noteCode(const QVariantMap &frame)
{
    const auto code = codeOf(frame);
    if (!code.isEmpty())
        codes.insert(functionOf(frame), code);
}

/// A function is told by its code; what the engine has taken apart for speed may not know it any more.
QString ScriptProfiler::State::identityOf(const QVariantMap &frame) const
{
    const auto function = functionOf(frame);
    const auto code = codeOf(frame);
    return function + u' ' + (code.isEmpty() ? codes.value(function) : code);
}

CPUProfile::Call ScriptProfiler::State::callOf(const QVariantMap &frame, QString &nameOfCalled)
{
    auto name = frame.value(QStringLiteral("name")).toString();
    if (name == u"(program)") // which viewers take for the time outside of scripts
        name = QStringLiteral("(script)");
    else if (name == u"(anonymous function)")
        name.clear();
    const auto sourceID = frame.value(QStringLiteral("sourceID")).toLongLong();
    const auto url = urls.value(sourceID);
    const auto identity = identityOf(frame);
    if (!url.startsWith(u"file:"))
        return {identity, name, {}, url, 0, 0};
    const int line = placeNumber(frame, QStringLiteral("line"));
    const auto place = locations.place(name, url, {std::max(line, 1), placeNumber(frame, QStringLiteral("column"))});
    nameOfCalled = line > 0 ? place.name : QString();
    return {identity, name, {}, urlOf(place.frame.file), line > 0 ? place.frame.line : 0, place.frame.column};
}
