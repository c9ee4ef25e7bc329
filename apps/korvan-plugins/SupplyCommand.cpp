#include "Commands.h"

#include "OutputFiles.h"
#include "PluginSession.h"
#include "TextTable.h"
#include "Waiting.h"
#include "commands/DataSuppliers.h"
#include "document/DocumentFile.h"
#include "document/LayerData.h"
#include "hosting/LogCollector.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

const auto startup = QStringLiteral("Startup");

QString kindText(DataSupplier::Kind kind)
{
    return kind == DataSupplier::Kind::Text ? QStringLiteral("text") : QStringLiteral("image");
}

OrderedVariantDictionary describeSupplier(const DataSupplier &supplier)
{
    return {
        {QStringLiteral("plugin"), supplier.pluginIdentifier},
        {QStringLiteral("id"), supplier.identifier},
        {QStringLiteral("name"), supplier.name},
        {QStringLiteral("kind"), kindText(supplier.kind)},
    };
}

/// One use of what plug-ins offer: starts them, lists their offers, or puts values into a document.
class Supplying
{
public:
    Supplying(const GlobalOptions &global, const SupplyOptions &options, Output &output)
        : m_options(options)
        , m_output(output)
        , m_session(global)
        , m_log(std::make_shared<LogCollector>([this](const QVariantMap &entry, const QString &) { noteEntry(entry); }))
    {
        m_session.manager().setLogAction(m_log);
    }

    ExitCode perform()
    {
        startPlugins();
        if (!m_options.plugin)
            return list();
        const auto supplier = findSupplier();
        if (!supplier || !loadDocument() || !checkOutput())
            return ExitCode::Failed;
        const bool isDone = putIntoLayers(*supplier) && saveDocument();
        return isDone && !m_hasErrors ? ExitCode::Done : ExitCode::Failed;
    }

private:
    KRPluginManager &manager() { return m_session.manager(); }

    void noteEntry(const QVariantMap &entry)
    {
        m_hasErrors = m_hasErrors || entry.value(QStringLiteral("level")).toString() == u"error";
        m_latestText = entry.value(QStringLiteral("stringValue")).toString();
        printToStandardError(m_latestText);
    }

    /// Runs what plug-ins with data do when the application starts, and waits for those that take their time.
    void startPlugins()
    {
        QList<KRPluginCommandSpecifier> started;
        const auto plugins = manager().enabledPlugins();
        for (const auto &plugin : plugins) {
            const auto identifier = plugin->identifier().value_or(QString());
            const bool isMeant = plugin->suppliesData() && m_options.plugin.value_or(identifier) == identifier;
            for (const auto &entry : plugin->commands()) {
                const auto &command = entry.second;
                if (!isMeant || !command->handlers().contains(startup))
                    continue;
                manager().runHandlerWithKey(startup, command->identifier().value_or(QString()), identifier, {});
                started.append(command->commandSpecifier());
            }
        }
        waitUntil([&] {
            const auto suppliers = manager().availableDataSuppliers();
            return std::all_of(started.begin(), started.end(), [&](const auto &specifier) {
                const auto offers = [&](const auto &supplier) {
                    return supplier.pluginIdentifier == specifier.pluginBundleIdentifier();
                };
                return !manager().isCommandRunning(specifier)
                    || std::any_of(suppliers.begin(), suppliers.end(), offers);
            });
        });
    }

    /// Runs the event loop until the condition holds, and at most as long as the user is ready to wait.
    bool waitUntil(const std::function<bool()> &condition)
    {
        constexpr std::chrono::milliseconds pause(10);
        waitUntilCalled(
            [](const auto &done) { LTAppEnvironment::runOnMainQueue(done); }); // the runs that were asked for
        const QDeadlineTimer deadline(std::chrono::milliseconds(qint64(m_options.waitSeconds * 1000)));
        QEventLoop loop;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
            if (condition() || deadline.hasExpired())
                loop.quit();
        });
        if (!condition()) {
            timer.start(pause);
            loop.exec();
        }
        return condition();
    }

    ExitCode list()
    {
        const auto suppliers = manager().availableDataSuppliers();
        if (m_output.isJSON()) {
            QVariantList descriptions;
            for (const auto &supplier : suppliers)
                descriptions.append(QVariant::fromValue(describeSupplier(supplier)));
            m_output.document({{QStringLiteral("suppliers"), descriptions}});
        } else if (suppliers.isEmpty()) {
            m_output.line(QStringLiteral("No plug-in supplies data."));
        } else {
            TextTable table({QStringLiteral("PLUG-IN"), QStringLiteral("SUPPLIER"), QStringLiteral("KIND"),
                QStringLiteral("NAME")});
            for (const auto &supplier : suppliers)
                table.addRow({supplier.pluginIdentifier, supplier.identifier, kindText(supplier.kind), supplier.name});
            table.print(m_output);
        }
        return m_hasErrors ? ExitCode::Failed : ExitCode::Done;
    }

    std::optional<DataSupplier> findSupplier()
    {
        auto suppliers = manager().availableDataSuppliers();
        suppliers.removeIf([this](const DataSupplier &supplier) {
            const bool isNamed = !m_options.supplier || *m_options.supplier == supplier.identifier
                || *m_options.supplier == supplier.name;
            return supplier.pluginIdentifier != m_options.plugin || !isNamed;
        });
        if (suppliers.size() == 1)
            return suppliers.first();
        QStringList names;
        for (const auto &supplier : std::as_const(suppliers))
            names.append(QStringLiteral("\"%1\"").arg(supplier.identifier));
        if (!manager().plugins().contains(*m_options.plugin))
            m_output.error(QStringLiteral("There is no plug-in \"%1\".").arg(*m_options.plugin));
        else if (suppliers.isEmpty())
            m_output.error(QStringLiteral("The plug-in \"%1\" supplies no such data.").arg(*m_options.plugin));
        else
            m_output.error(QStringLiteral("The plug-in \"%1\" has several suppliers. Name one of them: %2.")
                               .arg(*m_options.plugin, names.join(QStringLiteral(", "))));
        return std::nullopt;
    }

    bool loadDocument()
    {
        if (!m_options.documentFile) {
            m_output.error(QStringLiteral("There are no layers to put data into. Name a document with --document."));
            return false;
        }
        auto document = readDocument(*m_options.documentFile);
        if (document)
            m_document = std::move(document).value();
        else
            m_output.error(document.error());
        return m_document != nullptr;
    }

    bool checkOutput()
    {
        if (!m_options.dumpDocumentFile)
            return true;
        const auto error = refusalToWrite(QStringLiteral("document"), *m_options.dumpDocumentFile);
        if (error)
            m_output.error(*error);
        return !error;
    }

    /// The selected layers of the kind, or all of them where none is selected.
    QList<LayerPointer> layersFor(DataSupplier::Kind kind) const
    {
        const auto selected = layersForData(m_document->selection(), kind);
        return selected.isEmpty() ? layersForData(m_document->allLayers(), kind) : selected;
    }

    bool putIntoLayers(const DataSupplier &supplier)
    {
        const auto layers = layersFor(supplier.kind);
        // Shared: it may come for as long as the plug-in lives.
        const auto answer = std::make_shared<std::optional<Result<DataSuppliers::Values>>>();
        manager().dataSuppliers()->supply(supplier, {layers.begin(), layers.end()},
            [answer](const Result<DataSuppliers::Values> &values) { *answer = values; });
        if (!waitUntil([&answer] { return answer->has_value(); })) {
            m_output.error(QStringLiteral("The values did not come in time."));
            return false;
        }
        const auto &values = **answer;
        if (!values) {
            const bool isShownAlready = values.error().localizedDescription == m_latestText; // as its log
            if (m_output.isJSON() || !isShownAlready)
                m_output.error(values.error());
            return false;
        }
        apply(supplier, layers, values.value());
        return true;
    }

    void apply(const DataSupplier &supplier, const QList<LayerPointer> &layers, const DataSuppliers::Values &values)
    {
        QVariantList descriptions;
        putDataIntoLayers(*m_document, supplier, layers, values, [&](const Layer &layer, const QString &value) {
            m_output.line(QStringLiteral("%1: %2").arg(layer.name(), value));
            descriptions.append(QVariant::fromValue(OrderedVariantDictionary{
                {QStringLiteral("id"), layer.id()},
                {QStringLiteral("name"), layer.name()},
                {QStringLiteral("value"), value},
            }));
        });
        m_output.document({{QStringLiteral("values"), descriptions}});
    }

    bool saveDocument()
    {
        if (!m_options.dumpDocumentFile)
            return true;
        const auto error = writeDocument(*m_document, *m_options.dumpDocumentFile);
        if (error)
            m_output.error(*error);
        return !error;
    }

    const SupplyOptions &m_options;
    Output &m_output;
    bool m_hasErrors = false;
    QString m_latestText;
    PluginSession m_session;
    std::shared_ptr<LogCollector> m_log;
    std::shared_ptr<Document> m_document;
};

} // namespace

ExitCode supplyData(const GlobalOptions &options, const SupplyOptions &supply, Output &output)
{
    return Supplying(options, supply, output).perform();
}
