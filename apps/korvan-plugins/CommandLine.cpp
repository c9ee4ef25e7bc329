#include "CommandLine.h"

#include "ArgumentTexts.h"
#include "AuthorArguments.h"
#include "Commands.h"
#include "UpdatesArguments.h"
#include "platform/JSONText.h"

#include <CLI/CLI.hpp>

namespace {

/// The options as texts of the command line, before they become those of the program.
struct RawOptions
{
    std::vector<std::string> folders;
    std::vector<std::string> defaults;
    std::vector<std::string> handlers;
    std::string supportFolder;
    std::string defaultsFile;
    std::string resourcesFolder;
    std::string hostVersion;
    std::string blocklistURL;
    std::string plugin;
    std::vector<std::string> plugins;
    std::string port;
    std::string message;
    std::string supplier;
    std::string specifier;
    std::string standaloneFile;
    std::string documentFile;
    std::string context;
    std::string dumpDocumentFile;
    std::string archive;
    std::string unpackFolder;
    std::string exportFolder;
    std::string firstVersion;
    std::string secondVersion;
    double waitSeconds = 60;
    bool json = false;
    bool safeMode = false;
};

std::optional<QString> textIfGiven(const CLI::App &app, const std::string &option, const std::string &argument)
{
    return app.count(option) > 0 ? std::optional(text(argument)) : std::nullopt;
}

QVariantMap readDefaults(const std::vector<std::string> &arguments)
{
    QVariantMap defaults;
    for (const auto &argument : arguments) {
        const auto pair = QByteArray::fromStdString(argument);
        const auto equals = pair.indexOf('=');
        const auto value = variantFromJSON(pair.mid(equals + 1));
        const bool isUsable =
            value && value.value().typeId() != QMetaType::Nullptr && value.value().typeId() != QMetaType::QVariantMap;
        if (equals <= 0 || !isUsable) {
            throw CLI::ValidationError(
                "--default", "\"" + argument + "\" is not KEY=JSON with a text, number, boolean or array");
        }
        defaults.insert(QString::fromUtf8(pair.left(equals)), value.value());
    }
    return defaults;
}

QVariantMap readContext(const std::string &argument)
{
    if (argument.empty())
        return {};
    const auto value = variantFromJSON(QByteArray::fromStdString(argument));
    if (!value || value.value().typeId() != QMetaType::QVariantMap)
        throw CLI::ValidationError("--context", "the context has to be a JSON object");
    return value.value().toMap();
}

/// Other bytes would name other files than the user's, as soon as they were texts.
void requireText(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (!QUtf8StringView(argv[i]).isValidUtf8())
            throw CLI::ValidationError("argument " + std::to_string(i), "it is not UTF-8");
    }
}

class Program
{
public:
    Program()
    {
        m_app.set_version_flag("--version", "korvan-plugins " KORVAN_VERSION, "Show the version and leave");
        m_app.require_subcommand(1);
        m_app.fallthrough();
        m_app.failure_message(CLI::FailureMessage::simple);
        addGlobalOptions();
        addList();
        addInfo();
        addMenu();
        addEdit();
        addRun();
        addSupply();
        addEnabling("enable", "Enable plug-ins", true);
        addEnabling("disable", "Disable plug-ins", false);
        addState();
        addBlocklist();
        m_updates.addTo(m_app, std::bind_front(&Program::addCommandTo, this), m_globalOptions);
        addWatch();
        addPorts();
        addUnpack();
        addExport();
        m_author.addTo(m_app, std::bind_front(&Program::addCommandTo, this), m_globalOptions);
        addCompareVersions();
        addDemo();
    }

    ExitCode run(int argc, char **argv)
    {
        try {
            requireText(argc, argv);
            m_app.parse(argc, argv);
            m_globalOptions = globalOptions();
            m_runOptions = runOptions();
        } catch (const CLI::ParseError &error) {
            return m_app.exit(error) == 0 ? ExitCode::Done : ExitCode::WrongUsage;
        }
        Output output(m_raw.json ? Output::Format::JSON : Output::Format::Text);
        return m_command(output);
    }

private:
    void addGlobalOptions()
    {
        m_app.add_option("--folder", m_raw.folders, "A plug-in folder; may be repeated, replaces the usual ones")
            ->type_name("DIR")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        m_app.add_option("--support-dir", m_raw.supportFolder, "The application's support folder")->type_name("DIR");
        m_app.add_option("--defaults", m_raw.defaultsFile, "The file of the user's settings")->type_name("FILE");
        m_app.add_option("--default", m_raw.defaults, "One setting for this call; may be repeated")
            ->type_name("KEY=JSON")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        m_app.add_flag("--safe-mode", m_raw.safeMode, "Load every plug-in disabled");
        m_app.add_option("--resources", m_raw.resourcesFolder, "The application's resources")->type_name("DIR");
        m_app.add_option("--host-version", m_raw.hostVersion, "The application's version")->type_name("VERSION");
        m_app
            .add_option(
                "--blocklist-url", m_raw.blocklistURL, "Where the vendor's list is fetched, up to the host's name")
            ->type_name("URL");
        m_app.add_flag("--json", m_raw.json, "Print one JSON document");
    }

    CLI::App *addCommand(const char *name, const char *description, std::function<ExitCode(Output &)> command)
    {
        return addCommandTo(m_app, name, description, std::move(command));
    }

    CLI::App *addCommandTo(
        CLI::App &parent, const char *name, const char *description, std::function<ExitCode(Output &)> command)
    {
        auto *const subcommand = parent.add_subcommand(name, description);
        subcommand->fallthrough();
        subcommand->callback([this, command = std::move(command)] { m_command = command; });
        return subcommand;
    }

    void addList()
    {
        addCommand("list", "List the installed plug-ins",
            [this](Output &output) { return listPlugins(m_globalOptions, output); });
    }

    void addInfo()
    {
        auto *const info = addCommand("info", "Show one plug-in, installed or a bundle folder",
            [this](Output &output) { return showPlugin(m_globalOptions, {text(m_raw.plugin)}, output); });
        info->add_option("plugin", m_raw.plugin, "Identifier of a plug-in, or path of a bundle")
            ->type_name("ID|PATH")
            ->required();
    }

    void addMenu()
    {
        addCommand("menu", "Show the plug-ins menu, filled and sorted",
            [this](Output &output) { return showMenu(m_globalOptions, output); });
    }

    void addEdit()
    {
        auto *const edit = addCommand("edit", "Open a plug-in in the editor of the setting \"Plugin Editor\"",
            [this](Output &output) { return editPlugin(m_globalOptions, {text(m_raw.plugin)}, output); });
        edit->add_option("plugin", m_raw.plugin, "Identifier of a plug-in")->type_name("ID")->required();
    }

    void addRun()
    {
        m_run = addCommand("run", "Run a command and show what it logs",
            [this](Output &output) { return runCommand(m_globalOptions, m_runOptions, output); });
        auto *const specifier =
            m_run->add_option("command", m_raw.specifier, "The command, as PLUG-IN/COMMAND")->type_name("SPEC");
        m_run->add_option("--standalone", m_raw.standaloneFile, "A file of bare statements to run instead")
            ->type_name("FILE")
            ->excludes(specifier);
        m_run->add_option("--handler", m_raw.handlers, "Handler key to run; may be repeated (run)")
            ->type_name("KEY")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        m_run->add_option("--document", m_raw.documentFile, "Document to work on")->type_name("FILE");
        m_run->add_option("--context", m_raw.context, "Further keys of the context")->type_name("JSON");
        m_run->add_option("--wait", m_raw.waitSeconds, "Longest wait for a command that stays running (60)")
            ->type_name("SECONDS")
            ->check(CLI::Range(0.0, 1e6));
        m_run->add_option("--dump-document", m_raw.dumpDocumentFile, "Where to write the document afterwards")
            ->type_name("FILE");
    }

    void addSupply()
    {
        m_supply = addCommand("supply", "Put data of plug-ins into the layers of a document, or list what they offer",
            [this](Output &output) { return supplyData(m_globalOptions, supplyOptions(), output); });
        m_supply->add_option("plugin", m_raw.plugin, "Identifier of a plug-in")->type_name("ID");
        m_supply->add_option("supplier", m_raw.supplier, "What it offers, where it offers more than one thing")
            ->type_name("NAME");
        m_supply->add_option("--document", m_raw.documentFile, "Document whose layers are filled")->type_name("FILE");
        m_supply->add_option("--wait", m_raw.waitSeconds, "Longest wait for a plug-in (60)")
            ->type_name("SECONDS")
            ->check(CLI::Range(0.0, 1e6));
        m_supply->add_option("--dump-document", m_raw.dumpDocumentFile, "Where to write the document afterwards")
            ->type_name("FILE");
    }

    void addEnabling(const char *name, const char *description, bool enabled)
    {
        auto *const command = addCommand(name, description, [this, enabled](Output &output) {
            return enablePlugins(m_globalOptions, {texts(m_raw.plugins), enabled}, output);
        });
        command->add_option("plugins", m_raw.plugins, "Identifiers of plug-ins")->type_name("ID")->required();
    }

    void addState()
    {
        addCommand("state", "Show what is remembered of the plug-ins",
            [this](Output &output) { return showState(m_globalOptions, output); });
    }

    void addBlocklist()
    {
        auto *const blocklist = m_app.add_subcommand("blocklist", "The versions of plug-ins that do not work");
        blocklist->require_subcommand(1);
        blocklist->fallthrough();
        addCommandTo(*blocklist, "show", "Show the list in force",
            [this](Output &output) { return showBlocklist(m_globalOptions, output); });
        addCommandTo(*blocklist, "update", "Fetch the vendor's list and apply it",
            [this](Output &output) { return updateBlocklist(m_globalOptions, output); });
    }

    void addWatch()
    {
        addCommand("watch", "Reload on changes of the plug-ins and tell what changed, until interrupted",
            [this](Output &output) { return watchPlugins(m_globalOptions, output); });
    }

    void addPorts()
    {
        auto *const listen =
            addCommand("listen", "Show what is sent to a message port, until interrupted", [this](Output &output) {
                return listenOnPort({text(m_raw.port), {}}, output);
            });
        listen->add_option("port", m_raw.port, "Name of the port")->type_name("PORT")->required();
        auto *const send = addCommand("send", "Send a text to a message port", [this](Output &output) {
            return sendToPort({text(m_raw.port), text(m_raw.message)}, output);
        });
        send->add_option("port", m_raw.port, "Name of the port")->type_name("PORT")->required();
        send->add_option("message", m_raw.message, "The text")->type_name("MESSAGE")->required();
    }

    void addUnpack()
    {
        auto *const unpack =
            addCommand("unpack", "Unpack an archive, with nothing of it outside the folder", [this](Output &output) {
                return unpackArchive({text(m_raw.archive), text(m_raw.unpackFolder)}, output);
            });
        unpack->add_option("archive", m_raw.archive, "The archive")->type_name("ZIP")->required();
        unpack->add_option("folder", m_raw.unpackFolder, "Where to unpack it; made when it does not exist")
            ->type_name("FOLDER")
            ->required();
    }

    void addExport()
    {
        auto *const exporting =
            addCommand("export", "Write a plug-in, installed or a bundle folder, as a new one", [this](Output &output) {
                return exportPlugin(m_globalOptions, {text(m_raw.plugin), text(m_raw.exportFolder)}, output);
            });
        exporting->add_option("plugin", m_raw.plugin, "Identifier of a plug-in, or path of a bundle")
            ->type_name("ID|PATH")
            ->required();
        exporting->add_option("folder", m_raw.exportFolder, "The new bundle's folder, which must not exist yet")
            ->type_name("FOLDER")
            ->required();
    }

    void addCompareVersions()
    {
        auto *const compare =
            addCommand("compare-versions", "Tell which of two versions is newer", [this](Output &output) {
                return compareVersions({text(m_raw.firstVersion), text(m_raw.secondVersion)}, output);
            });
        compare->add_option("first", m_raw.firstVersion, "A version")->type_name("A")->required();
        compare->add_option("second", m_raw.secondVersion, "Another version")->type_name("B")->required();
    }

    void addDemo()
    {
        addCommand("demo", "Show the library at work on the example plug-ins",
            [this](Output &output) { return showDemo(m_globalOptions, output); });
    }

    GlobalOptions globalOptions() const
    {
        GlobalOptions options;
        if (!m_raw.folders.empty())
            options.folders = texts(m_raw.folders);
        options.supportFolder = textIfGiven(m_app, "--support-dir", m_raw.supportFolder);
        options.defaultsFile = textIfGiven(m_app, "--defaults", m_raw.defaultsFile);
        options.defaults = readDefaults(m_raw.defaults);
        options.resourcesFolder = textIfGiven(m_app, "--resources", m_raw.resourcesFolder);
        options.hostVersion = textIfGiven(m_app, "--host-version", m_raw.hostVersion);
        options.blocklistURL = textIfGiven(m_app, "--blocklist-url", m_raw.blocklistURL);
        options.safeMode = m_raw.safeMode;
        options.json = m_raw.json;
        return options;
    }

    RunOptions runOptions() const
    {
        RunOptions options;
        const bool namesNothing = m_raw.specifier.empty() && m_raw.standaloneFile.empty();
        if (m_run->parsed() && namesNothing)
            throw CLI::RequiredError("SPEC or --standalone FILE");
        options.specifier = text(m_raw.specifier);
        options.standaloneFile = textIfGiven(*m_run, "--standalone", m_raw.standaloneFile);
        options.handlers = m_raw.handlers.empty() ? QStringList{QStringLiteral("run")} : texts(m_raw.handlers);
        options.documentFile = textIfGiven(*m_run, "--document", m_raw.documentFile);
        options.context = readContext(m_raw.context);
        options.waitSeconds = m_raw.waitSeconds;
        options.dumpDocumentFile = textIfGiven(*m_run, "--dump-document", m_raw.dumpDocumentFile);
        return options;
    }

    SupplyOptions supplyOptions() const
    {
        SupplyOptions options;
        options.plugin = textIfGiven(*m_supply, "plugin", m_raw.plugin);
        options.supplier = textIfGiven(*m_supply, "supplier", m_raw.supplier);
        options.documentFile = textIfGiven(*m_supply, "--document", m_raw.documentFile);
        options.waitSeconds = m_raw.waitSeconds;
        options.dumpDocumentFile = textIfGiven(*m_supply, "--dump-document", m_raw.dumpDocumentFile);
        return options;
    }

    CLI::App m_app{"Lists, inspects and runs plug-ins of the design application.", "korvan-plugins"};
    RawOptions m_raw;
    GlobalOptions m_globalOptions;
    RunOptions m_runOptions;
    UpdatesArguments m_updates;
    AuthorArguments m_author;
    CLI::App *m_run = nullptr;
    CLI::App *m_supply = nullptr;
    std::function<ExitCode(Output &)> m_command;
};

} // namespace

ExitCode runCommandLine(int argc, char **argv)
{
    return Program().run(argc, argv);
}
