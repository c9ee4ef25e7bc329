#include "Commands.h"

#include "CommandRunner.h"
#include "DemoUpdate.h"
#include "DocumentChanges.h"
#include "MenuReport.h"
#include "PluginSession.h"
#include "TextTable.h"
#include "document/DocumentContext.h"
#include "document/DocumentFile.h"
#include "hosting/Examples.h"
#include "hosting/FolderCopy.h"
#include "platform/Menu.h"
#include "platform/NotificationCenter.h"

#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

namespace {

/// The demonstration: the example plug-ins at work on a copy of an example document, step by step.
class Demo
{
public:
    Demo(const GlobalOptions &options, const QString &folder, std::shared_ptr<Document> document, Output &output)
        : m_output(output)
        , m_update(folder + QStringLiteral("/plugins"))
        , m_session(options)
        , m_log(std::make_shared<LogCollector>())
        , m_document(std::move(document))
        , m_documentFile(folder + QStringLiteral("/documents/poster.json"))
    {
        m_session.manager().setLogAction(m_log);
    }

    ExitCode perform()
    {
        showPlugins();
        showTheirMenu();
        showDocument();
        runStep(QStringLiteral("com.example.rename-layers/number"));
        runStep(QStringLiteral("com.example.tidy-layers/round"));
        runStep(QStringLiteral("com.example.tidy-layers/sort-by-name"));
        runStep(QStringLiteral("com.example.bracket-notes/add"));
        runStep(QStringLiteral("com.example.grid-generator/make grid"),
            {{QStringLiteral("columns"), 2}, {QStringLiteral("rows"), 1}});
        watchWhileRenaming();
        runStep(QStringLiteral("com.example.colour-palette/report"));
        runStep(QStringLiteral("com.example.broken-script/syntax"), {}, Mistakes::AreTheSubject);
        runStep(QStringLiteral("com.example.broken-script/handler"), {}, Mistakes::AreTheSubject);
        save();
        disableOne();
        editWhileWatched();
        update();
        m_output.document({{QStringLiteral("steps"), m_steps}, {QStringLiteral("ok"), !m_hasFailed}});
        return m_hasFailed ? ExitCode::Failed : ExitCode::Done;
    }

private:
    enum class Mistakes { AreFailures, AreTheSubject };

    void heading(const QString &text)
    {
        m_output.line();
        m_output.line(text, Output::Colour::Bold);
    }

    void showPlugins()
    {
        const auto plugins = m_session.manager().plugins();
        heading(QStringLiteral("%1 plug-ins were found").arg(plugins.size()));
        TextTable table({QStringLiteral("NAME"), QStringLiteral("VERSION"), QStringLiteral("COMMANDS")});
        for (const auto &bundle : plugins) {
            QStringList names;
            for (const auto &[identifier, command] : bundle->commands())
                names.append(command->name().value_or(identifier));
            table.addRow({bundle->name().value_or(QString()), bundle->version().value_or(QString()),
                names.join(QStringLiteral(", "))});
        }
        table.print(m_output);
    }

    void showTheirMenu()
    {
        heading(QStringLiteral("Their menu"));
        Menu menu;
        m_session.manager().addPluginsToMenu(menu, nullptr);
        printMenu(menu, m_output);
    }

    void showDocument()
    {
        heading(QStringLiteral("They work on the document \"%1\"").arg(m_document->name()));
        for (const auto &line : outlineOf(*m_document))
            m_output.line(line);
    }

    std::optional<CommandRunner> runnerFor(const QString &specifier)
    {
        const auto found = m_session.findCommand(specifier);
        m_hasFailed |= !found;
        if (!found)
            return std::nullopt;
        const auto bundle = m_session.manager().plugins().value(*found->pluginBundleIdentifier());
        const auto command = m_session.manager().commandWithSpecifier(*found);
        heading(QStringLiteral("%1: %2").arg(bundle->name().value_or(QString()), command->name().value_or(QString())));
        return CommandRunner(m_session.manager(), *m_log, command);
    }

    void runStep(const QString &specifier, const QVariantMap &values = {}, Mistakes mistakes = Mistakes::AreFailures)
    {
        auto runner = runnerFor(specifier);
        if (!runner)
            return;
        const DocumentChanges changes(*m_document);
        runner->run(QStringLiteral("run"), contextWithDocument(values, m_document));
        runner->wait(std::chrono::seconds(10));
        showResult(specifier, runner->takeResults(), changes.since(*m_document), mistakes);
    }

    /// A command that stays running sees what another one does.
    void watchWhileRenaming()
    {
        const auto watch = QStringLiteral("com.example.layer-watcher/watch");
        auto watcher = runnerFor(watch);
        if (!watcher)
            return;
        watcher->run(QStringLiteral("run"),
            contextWithDocument({{QStringLiteral("rounds"), 2}, {QStringLiteral("pause"), 50}}, m_document));
        const DocumentChanges changes(*m_document);
        m_document->layers().first()->setName(QStringLiteral("Renamed by the user"));
        watcher->wait(std::chrono::seconds(10));
        showResult(watch, watcher->takeResults(), changes.since(*m_document), Mistakes::AreFailures);
    }

    void showResult(
        const QString &specifier, const QList<CommandResult> &results, const QStringList &changes, Mistakes mistakes)
    {
        QVariantList log;
        for (const auto &result : results) {
            for (const auto &entry : result.log) {
                const bool isError = entry.value(QStringLiteral("level")).toString() == u"error";
                const auto text = entry.value(QStringLiteral("stringValue")).toString();
                m_output.line(text, isError ? Output::Colour::Red : Output::Colour::Plain);
                log.append(text);
            }
            m_hasFailed |= result.hasErrors() != (mistakes == Mistakes::AreTheSubject) || !result.isFinished;
        }
        for (const auto &change : changes)
            m_output.line(QStringLiteral("  ") + change, Output::Colour::Green);
        m_steps.append(QVariant::fromValue(OrderedVariantDictionary{
            {QStringLiteral("command"), specifier},
            {QStringLiteral("log"), log},
            {QStringLiteral("changes"), changes},
        }));
    }

    /// What the user disables stays away until it is enabled again.
    void disableOne()
    {
        auto &manager = m_session.manager();
        const auto identifier = QStringLiteral("com.example.colour-palette");
        manager.disablePlugin(manager.plugins().value(identifier));
        heading(QStringLiteral("The user disables Colour Palette"));
        const bool isGone = !showTopOfMenu().contains(QStringLiteral("Colours"));
        manager.enablePlugin(manager.plugins().value(identifier));
        m_hasFailed |= !isGone || !manager.plugins().value(identifier)->isEnabled();
    }

    QStringList showTopOfMenu()
    {
        Menu menu;
        m_session.manager().addPluginsToMenu(menu, nullptr);
        QStringList titles;
        for (const auto &item : menu.items()) {
            if (!item.isSeparator)
                titles.append(item.title);
        }
        m_output.line(QStringLiteral("In the menu: ") + titles.join(QStringLiteral(", ")));
        return titles;
    }

    /// An author saves a file of a plug-in, and the registry follows.
    void editWhileWatched()
    {
        auto &manager = m_session.manager();
        const auto identifier = QStringLiteral("com.example.colour-palette");
        const auto url = manager.plugins().value(identifier)->url();
        QFile manifest(url.toLocalFile() + QStringLiteral("Contents/Korvan/manifest.json"));
        heading(QStringLiteral("The author of Colour Palette saves another title"));
        if (!manifest.open(QIODevice::ReadWrite)) {
            m_hasFailed = true;
            return;
        }
        const auto text = manifest.readAll().replace("\"Colours\"", "\"Colours of the Day\"");
        manifest.seek(0);
        manifest.write(text);
        manifest.close();
        const bool isReloaded = waitForReload();
        m_hasFailed |= !isReloaded || !showTopOfMenu().contains(QStringLiteral("Colours of the Day"));
    }

    void update()
    {
        heading(QStringLiteral("The author of Lorem Text publishes a newer version"));
        m_hasFailed |= !m_update.perform(m_session, m_output);
    }

    bool waitForReload()
    {
        bool isReloaded = false;
        QEventLoop loop;
        const auto observer = LTAppEnvironment::current().notificationCenter().addObserver(
            KRPluginManagerDidReloadPluginsNotification, &m_session.manager(), [&](const Notification &) {
                isReloaded = true;
                loop.quit();
            });
        QTimer::singleShot(std::chrono::seconds(10), &loop, &QEventLoop::quit);
        loop.exec();
        return isReloaded;
    }

    void save()
    {
        const auto error = writeDocument(*m_document, m_documentFile);
        m_hasFailed |= error.has_value();
        heading(error ? error->localizedDescription : QStringLiteral("The document was saved and read again"));
        const auto again = readDocument(m_documentFile);
        m_hasFailed |= !again || jsonFromDocument(*again.value()) != jsonFromDocument(*m_document);
    }

    Output &m_output;
    DemoUpdate m_update;
    PluginSession m_session;
    std::shared_ptr<LogCollector> m_log;
    std::shared_ptr<Document> m_document;
    QString m_documentFile;
    QVariantList m_steps;
    bool m_hasFailed = false;
};

} // namespace

ExitCode showDemo(const GlobalOptions &options, Output &output)
{
    const QTemporaryDir folder;
    const auto examples = examplesFolder();
    if (!examples || !folder.isValid() || !copyFolder(*examples, folder.path())) {
        output.error(QStringLiteral("The examples cannot be copied to a temporary folder."));
        return ExitCode::Failed;
    }
    auto document = readDocument(folder.filePath(QStringLiteral("documents/poster.json")));
    if (!document) {
        output.error(document.error());
        return ExitCode::Failed;
    }
    auto demoOptions = options;
    demoOptions.folders = QStringList{folder.filePath(QStringLiteral("plugins"))};
    demoOptions.supportFolder = folder.filePath(QStringLiteral("support"));
    demoOptions.defaultsFile = folder.filePath(QStringLiteral("defaults.ini"));
    return Demo(demoOptions, folder.path(), std::move(document).value(), output).perform();
}
