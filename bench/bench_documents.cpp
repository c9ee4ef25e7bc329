// What walking a document's layers with "korvan/dom" costs, beside the same over plain objects of the language.

#include "commands/CoreModules.h"
#include "commands/KRPluginCommand.h"
#include "document/DocumentFile.h"
#include "platform/LTAppEnvironment.h"
#include "platform/OpenDocuments.h"
#include "support/Interleaved.h"

#include <QCoreApplication>

#include <string>

namespace {

/// Groups of 20 layers of each type in turn.
QByteArray documentText(int layerCount)
{
    static constexpr const char *types[] = {"rectangle", "oval", "text", "image"};
    QByteArray text = "{\"layers\": [";
    for (int i = 0; i < layerCount; ++i) {
        const auto number = QByteArray::number(i);
        const bool isGroup = i % 20 == 0;
        if (isGroup)
            text += QByteArray(i > 0 ? "]}," : "") + "{\"id\": \"g" + number + "\", \"name\": \"Group " + number
                + "\", \"type\": \"group\", \"frame\": {\"x\": 0, \"y\": 0, \"width\": 9, \"height\": 9}, \"layers\": "
                  "[";
        else
            text += QByteArray(i % 20 > 1 ? "," : "") + "{\"id\": \"" + number + "\", \"name\": \"Layer " + number
                + "\", \"type\": \"" + types[i % 4] + "\", \"frame\": {\"x\": " + number
                + ", \"y\": 2.5, \"width\": 30, \"height\": 40}, \"style\": {\"fill\": \"#112233\"}"
                + (i % 4 == 2 ? ", \"text\": \"Text\"" : "") + '}';
    }
    return text + "]}]}";
}

class OneDocument final : public OpenDocuments
{
public:
    explicit OneDocument(std::shared_ptr<Document> document)
        : m_document(std::move(document))
    { }
    QList<ScriptObjectPointer> documents() const override { return {m_document}; }
    ScriptObjectPointer activeDocument() const override { return m_document; }

private:
    std::shared_ptr<Document> m_document;
};

class Environment final : public LTAppEnvironment
{
public:
    QUrl mainBundleResourcesFolder() const override
    {
        return QUrl::fromLocalFile(QStringLiteral(KORVAN_RESOURCES_FOLDER "/"));
    }
    OpenDocuments *openDocuments() override { return m_documents.get(); }

    void open(int layerCount)
    {
        m_documents = std::make_unique<OneDocument>(documentFromJSON(documentText(layerCount)).value());
    }

private:
    std::unique_ptr<OneDocument> m_documents;
    Installation m_installation{*this};
};

Environment &environment()
{
    static Environment environment;
    return environment;
}

/// What both work on: `plain` has the layers' values in objects, as fast as the language can.
constexpr const char *preparation = R"(
    const document = require('korvan/dom').activeDocument();
    const plain = document.layers.map((layer) => ({
        type: layer.type, name: layer.name, frame: { ...layer.frame }, style: { ...layer.style } }));
    require('korvan/dom').activeDocument().find('text'); // what is compiled once is
    true)";

struct Work
{
    const char *name;
    const char *floor;
    const char *ours;
};

constexpr Work works[] = {
    {"find/type", "plain.filter((layer) => layer.type === 'text').length", "document.findAll('text').length"},
    {"find/name", "plain.filter((layer) => layer.name.endsWith('7')).length",
        "document.findAll('[name$=\"7\"]').length"},
    {"find/number", "plain.filter((layer) => layer.type === 'oval' && layer.frame.x > 4000).length",
        "document.findAll('oval[x>4000]').length"},
    {"find/function", "plain.filter((layer) => layer.type === 'text').length",
        "document.findAll((layer) => layer.type === 'text').length"},
    {"walk/layers", "plain.slice().length", "document.layers.length"},
    {"walk/names", "plain.map((layer) => layer.name).join().length",
        "document.layers.map((layer) => layer.name).join().length"},
    {"walk/frames", "plain.reduce((sum, layer) => sum + layer.frame.width, 0)",
        "document.layers.reduce((sum, layer) => sum + layer.frame.width, 0)"},
    {"walk/styles", "plain.filter((layer) => layer.style.fill === '#112233').length",
        "document.layers.filter((layer) => layer.style.fill === '#112233').length"},
};

void measure(benchmark::State &state, const Work &work)
{
    environment().open(int(state.range(0)));
    const auto command = std::make_shared<KRPluginCommand>(nullptr, QStringLiteral("bench"), QStringLiteral("Bench"),
        QStringLiteral("onRun"), KRPluginCommand::Scope::Document);
    COScript session(coreModulesOfApplication(), QStringLiteral("bench"));
    session.setHosting(command);
    if (session.executeString(QString::fromLatin1(preparation)) != QVariant(true)) {
        state.SkipWithError("the layers could not be read");
        return;
    }
    const auto evaluate = [&](const char *source) { return session.executeString(QString::fromLatin1(source)); };
    if (!evaluate(work.ours).isValid() || evaluate(work.ours) != evaluate(work.floor)) {
        state.SkipWithError("both do not come to the same");
        return;
    }
    measureInterleaved(
        state, [&] { evaluate(work.floor); }, [&] { evaluate(work.ours); });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    environment();
    for (const auto &work : works) {
        benchmark::RegisterBenchmark(work.name, measure, work)
            ->Arg(5000)
            ->Iterations(50)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
