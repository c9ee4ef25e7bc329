#include "CommandLine.h"

#include "ArgumentTexts.h"
#include "AuthorArguments.h"
#include "Commands.h"
#include "GlobalArguments.h"
#include "RunArguments.h"
#include "SupplyArguments.h"
#include "UpdatesArguments.h"
#include "hosting/UsersLanguage.h"

#include <CLI/CLI.hpp>

#include <QCoreApplication>

namespace {

/// The arguments of the smaller commands.
struct RawOptions
{
    std::string plugin;
    std::vector<std::string> plugins;
    std::string port;
    std::string message;
    std::string archive;
    std::string unpackFolder;
    std::string exportFolder;
    std::string firstVersion;
    std::string secondVersion;
};

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
        m_global.addTo(m_app);
        addList();
        addInfo();
        addMenu();
        addEdit();
        m_run.addTo(m_app, std::bind_front(&Program::addCommandTo, this), m_globalOptions);
        m_supply.addTo(m_app, std::bind_front(&Program::addCommandTo, this), m_globalOptions);
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
            m_globalOptions = m_global.options();
            m_run.read();
        } catch (const CLI::ParseError &error) {
            return m_app.exit(error) == 0 ? ExitCode::Done : ExitCode::WrongUsage;
        }
        // What programs read is the same for every user.
        const auto texts = m_globalOptions.json ? nullptr : translatorOfUsersLanguage();
        if (texts)
            QCoreApplication::installTranslator(texts.get());
        Output output(m_globalOptions.json ? Output::Format::JSON : Output::Format::Text);
        return m_command(output);
    }

private:
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

    CLI::App m_app{"Lists, inspects and runs plug-ins of the design application.", "korvan-plugins"};
    RawOptions m_raw;
    GlobalOptions m_globalOptions;
    GlobalArguments m_global;
    RunArguments m_run;
    SupplyArguments m_supply;
    UpdatesArguments m_updates;
    AuthorArguments m_author;
    std::function<ExitCode(Output &)> m_command;
};

} // namespace

ExitCode runCommandLine(int argc, char **argv)
{
    return Program().run(argc, argv);
}
