#include "UpdatesArguments.h"

#include "ArgumentTexts.h"

void UpdatesArguments::addTo(CLI::App &app, const AddCommand &addCommand, const GlobalOptions &options)
{
    auto *const updates = app.add_subcommand("updates", "Newer versions of the plug-ins");
    updates->require_subcommand(1);
    updates->fallthrough();
    addCommand(*updates, "check", "Read the update feeds of all plug-ins",
        [&options](Output &output) { return checkUpdates(options, output); });
    auto *const download = addCommand(*updates, "download", "Check, then download and unpack updates",
        [this, &options](Output &output) { return downloadUpdates(options, downloadOptions(), output); });
    auto *const plugins =
        download->add_option("plugins", m_plugins, "Plug-ins, each with a version or for its latest one")
            ->type_name("ID[@VERSION]");
    download->add_option("--all", m_all, "All updates: the latest or the compatible versions (latest)")
        ->check(CLI::IsMember({"latest", "compatible"}))
        ->excludes(plugins);
    auto *const install = addCommand(*updates, "install", "Install an update, downloaded before or now",
        [this, &options](Output &output) { return installUpdate(options, {text(m_plugin)}, output); });
    install->add_option("plugin", m_plugin, "A plug-in, with a version or for its latest one")
        ->type_name("ID[@VERSION]")
        ->required();
    addCommand(*updates, "clear", "Remove what was downloaded, and the versions that were replaced",
        [&options](Output &output) { return clearUpdates(options, output); });
}

DownloadOptions UpdatesArguments::downloadOptions() const
{
    const auto which =
        m_all == "compatible" ? DownloadOptions::AllUpdates::Compatible : DownloadOptions::AllUpdates::Latest;
    return {texts(m_plugins), which};
}
