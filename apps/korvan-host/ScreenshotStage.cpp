#include "ScreenshotStage.h"

#include "HostApplication.h"
#include "hosting/FolderCopy.h"
#include "hosting/ManifestChange.h"
#include "state/KRPluginManagingState.h"
#include "widgets/plugins/PluginUpdatesController.h"
#include "widgets/plugins/PluginsWindow.h"

#include <QDeadlineTimer>

namespace {

const auto updating = QStringLiteral("com.example.tidy-layers");
constexpr qint64 sizeOfUpdate = 3'400'000;
constexpr qint64 shownSize = 2'000'000;
constexpr qint64 bytesPerSecond = 1'600'000;

/// Whether it has come to that.
bool waitFor(const std::function<bool()> &condition)
{
    constexpr std::chrono::seconds patience(20);
    const QDeadlineTimer deadline(patience);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return condition();
}

} // namespace

ScreenshotStage::ScreenshotStage(const QString &plugins)
    : m_isComplete(m_server.isListening() && copyPlugins(plugins)
        && addFeed(QStringLiteral("Tidy Layers"), QStringLiteral("/tidy.zip"))
        && addFeed(QStringLiteral("Card Deck"), QStringLiteral("/cards.zip"))
        && addFeed(QStringLiteral("Lorem Text"), QString()))
{
    m_server.publishSlowly(QStringLiteral("/tidy.zip"), QByteArray(sizeOfUpdate, 'x'), bytesPerSecond);
}

/// As many as a window shows at once.
bool ScreenshotStage::copyPlugins(const QString &from) const
{
    const QStringList names{QStringLiteral("Bracket Notes"), QStringLiteral("Broken Script"),
        QStringLiteral("Card Deck"), QStringLiteral("Colour Palette"), QStringLiteral("Layer Watcher"),
        QStringLiteral("Lorem Text"), QStringLiteral("Rename Layers"), QStringLiteral("Tidy Layers")};
    return std::all_of(names.begin(), names.end(), [&](const QString &name) {
        const auto bundle = u'/' + name + QStringLiteral(".korvanplugin");
        return copyFolder(from + bundle, pluginFolder() + bundle);
    });
}

/// Without an archive the feed is one that nobody can read.
bool ScreenshotStage::addFeed(const QString &plugin, const QString &archive)
{
    const auto feed = u'/' + QString(plugin).remove(u' ') + QStringLiteral(".json");
    m_server.publish(feed,
        archive.isEmpty() ? QByteArray("?")
                          : R"({"version": "2.1", "downloadURL": ")" + m_server.url(archive).toEncoded() + "\"}");
    const auto bundle = QStringLiteral("%1/%2.korvanplugin").arg(pluginFolder(), plugin);
    return changeManifest(bundle, QStringLiteral("appcast"), m_server.url(feed).toString())
        && changeManifest(bundle, QStringLiteral("homepage"), QStringLiteral("https://example.com/"));
}

void ScreenshotStage::play(HostApplication &host) const
{
    auto &manager = host.plugins().manager();
    manager.pluginStateManager()->setIncompatiblePluginVersions(
        IncompatibleVersions{{QStringLiteral("com.example.bracket-notes"), QStringLiteral("99")}});
    manager.registerIncompatiblePlugins();
    manager.reloadPlugins();
    runCommands(host);
    checkForUpdates(host);
}

void ScreenshotStage::runCommands(HostApplication &host) const
{
    auto &manager = host.plugins().manager();
    const auto run = [&](const QString &plugin, const QString &command, const QVariantMap &more = {}) {
        auto context = host.windows().first()->commandContext();
        context.insert(more);
        manager.runHandlerWithKey(QStringLiteral("run"), command, QStringLiteral("com.example.") + plugin, context);
    };
    run(QStringLiteral("layer-watcher"), QStringLiteral("watch"),
        {{QStringLiteral("rounds"), 1'000'000}, {QStringLiteral("pause"), 1000}});
    for (const auto *const command : {"syntax", "loading", "timer", "promise", "missing", "module", "handler"})
        run(QStringLiteral("broken-script"), QLatin1StringView(command));
    auto &entries = host.plugins().log()->entries();
    waitFor([&entries] { return entries.rowCount() >= 9; }); // those seven, and two of the watcher
}

void ScreenshotStage::checkForUpdates(HostApplication &host)
{
    auto &window = host.pluginWindows().plugins();
    auto &updates = window.updates();
    window.checkForUpdates();
    waitFor([&updates] { return !updates.isChecking(); });
    updates.update(updating);
    waitFor([&updates] { return updates.state(updating).bytesReceived >= shownSize; });
    window.selectPlugin(updating);
}

void letWindowsSettle()
{
    for (int turn = 0; turn < 5; ++turn)
        QCoreApplication::processEvents();
}
