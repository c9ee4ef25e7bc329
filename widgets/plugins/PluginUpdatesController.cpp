#include "widgets/plugins/PluginUpdatesController.h"

#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "updates/ReportingUpdater.h"
#include "widgets/plugins/PluginOffers.h"
#include "widgets/plugins/ProgressRelay.h"

using Phase = PluginUpdateState::Phase;

namespace {

PluginUpdateState stateIn(Phase phase, const QString &version = {})
{
    PluginUpdateState state;
    state.phase = phase;
    state.version = version;
    return state;
}

} // namespace

PluginUpdatesController::PluginUpdatesController(KRPluginManager &manager, QObject *parent)
    : QObject(parent)
    , m_manager(&manager)
    , m_relay(std::make_shared<ProgressRelay>([this](const auto &progress) { progressed(progress); }))
{
    if (const auto updater = reportingUpdater())
        updater->setProgressHandler([relay = m_relay](const auto &progress) { relay->take(progress); });
    m_reloadObserver = LTAppEnvironment::current().notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, &manager, [this](const auto &) { pluginsReloaded(); });
    pluginsReloaded(); // the host may have checked before
}

PluginUpdatesController::~PluginUpdatesController()
{
    m_relay->stop();
    if (const auto updater = reportingUpdater())
        updater->setProgressHandler({});
}

std::shared_ptr<ReportingUpdater> PluginUpdatesController::reportingUpdater() const
{
    return m_manager ? std::dynamic_pointer_cast<ReportingUpdater>(m_manager->updater()) : nullptr;
}

template <class Predicate>
QStringList PluginUpdatesController::identifiersWith(Predicate predicate) const
{
    QStringList identifiers;
    for (auto state = m_states.begin(); state != m_states.end(); ++state) {
        if (predicate(*state))
            identifiers.append(state.key());
    }
    identifiers.sort();
    return identifiers;
}

QStringList PluginUpdatesController::available() const
{
    return identifiersWith([](const PluginUpdateState &state) { return state.phase == Phase::Available; });
}

QStringList PluginUpdatesController::underWay() const
{
    return identifiersWith([](const PluginUpdateState &state) { return state.isUnderWay(); });
}

void PluginUpdatesController::setState(const QString &identifier, const PluginUpdateState &state)
{
    if (m_states.value(identifier) == state)
        return;
    m_states.insert(identifier, state);
    emit stateChanged(identifier);
}

void PluginUpdatesController::fail(const QString &identifier, const QString &message)
{
    auto state = stateIn(Phase::Failed, m_states.value(identifier).version);
    state.message = message.isEmpty() ? Localizable::tr("Update failed") : message;
    setState(identifier, state);
}

void PluginUpdatesController::showOffer(const QString &identifier)
{
    const auto version = offeredVersion(*m_manager, identifier);
    setState(identifier, version ? stateIn(Phase::Available, *version) : stateIn(Phase::Idle));
}

void PluginUpdatesController::check()
{
    if (m_isChecking || !m_manager)
        return;
    m_isChecking = true;
    emit checkingChanged(true);
    const auto plugins = m_manager->plugins();
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
        if (!plugin.value()->updatingInfoURL().isEmpty() && !state(plugin.key()).isUnderWay())
            setState(plugin.key(), stateIn(Phase::Checking));
    }
    // Both come on the network thread.
    const QPointer self(this);
    const auto read = [self](const std::optional<KRError> &error, const std::shared_ptr<KRPluginBundle> &plugin,
                          const std::optional<QString> &) {
        LTAppEnvironment::runOnMainQueue([self, error, identifier = plugin->identifier().value_or(QString())] {
            if (self)
                self->feedRead(identifier, error);
        });
    };
    // What was offered before is not forgotten: updates may be waiting for their download.
    m_manager->checkForPluginUpdates({}, read, [self] {
        LTAppEnvironment::runOnMainQueue([self] {
            if (self)
                self->checkEnded();
        });
    });
}

void PluginUpdatesController::feedRead(const QString &identifier, const std::optional<KRError> &error)
{
    if (!m_manager || !m_manager->plugins().contains(identifier) || state(identifier).isUnderWay())
        return;
    if (error)
        fail(identifier, error->localizedDescription);
    else
        showOffer(identifier);
}

void PluginUpdatesController::checkEnded()
{
    m_isChecking = false;
    const auto identifiers = m_states.keys();
    for (const auto &identifier : identifiers) {
        if (state(identifier).phase == Phase::Checking)
            setState(identifier, stateIn(Phase::Idle));
    }
    emit checkingChanged(false);
}

void PluginUpdatesController::update(const QString &identifier)
{
    begin(identifier);
    beginNext();
}

void PluginUpdatesController::updateAll()
{
    const auto identifiers = available();
    for (const auto &identifier : identifiers)
        begin(identifier);
    beginNext();
}

void PluginUpdatesController::begin(const QString &identifier)
{
    const auto phase = state(identifier).phase;
    if (!m_manager || (phase != Phase::Available && phase != Phase::Failed))
        return;
    const auto version = offeredVersion(*m_manager, identifier);
    if (!version)
        return; // what has failed was the reading of its feed
    m_waiting.append(identifier);
    setState(identifier, stateIn(Phase::Waiting, *version));
}

void PluginUpdatesController::beginNext()
{
    while (m_manager && !m_current && !m_waiting.isEmpty()) {
        const auto identifier = m_waiting.takeFirst();
        const auto version = offeredVersion(*m_manager, identifier);
        if (!version)
            showOffer(identifier); // which is none any more
        else if (m_manager->isPluginUpdateDownloadedWithIdentifier(identifier, *version))
            install(identifier, *version);
        else
            download(identifier, *version);
    }
}

void PluginUpdatesController::download(const QString &identifier, const QString &version)
{
    const auto record = m_manager->versionsForPlugin(m_manager->plugins().value(identifier));
    const auto url = record ? record->downloadURLForVersion(version) : QUrl();
    if (url.isEmpty() || !m_manager->updater()) {
        fail(identifier, Localizable::tr("The update is not offered any more."));
        return;
    }
    m_current = identifier;
    m_isCancelled = false;
    m_speed = {};
    setState(identifier, stateIn(Phase::Downloading, version));
    if (const auto updater = reportingUpdater())
        updater->takeErrors(); // of others' downloads
    m_manager->downloadPluginUpdates({{identifier, {{version, url}}}}, [self = QPointer(this)](const auto &errors) {
        if (self)
            self->downloadEnded(errors);
    });
}

void PluginUpdatesController::progressed(const PluginDownloadProgress &progress)
{
    if (!m_current || m_isCancelled || progress.identifier != *m_current)
        return;
    m_speed.add(LTAppEnvironment::current().mainQueue().now(), progress.bytesReceived);
    auto current = state(*m_current);
    current.bytesReceived = progress.bytesReceived;
    current.bytesExpected = progress.bytesExpected;
    current.bytesPerSecond = m_speed.bytesPerSecond();
    setState(*m_current, current);
}

void PluginUpdatesController::downloadEnded(const std::optional<QList<KRError>> &errors)
{
    if (!m_manager || !m_current)
        return;
    const auto identifier = *std::exchange(m_current, std::nullopt);
    const auto version = state(identifier).version;
    const auto updater = reportingUpdater();
    const auto failures = updater ? updater->takeErrors() : errors.value_or(QList<KRError>());
    if (m_isCancelled || !isNewerThanInstalled(*m_manager, identifier, version))
        showOffer(identifier);
    else if (!failures.isEmpty())
        fail(identifier, failures.last().localizedDescription);
    else if (m_manager->isPluginUpdateDownloadedWithIdentifier(identifier, version))
        install(identifier, version);
    else
        fail(identifier, Localizable::tr("The archive of the update is empty or cannot be read."));
    beginNext();
}

void PluginUpdatesController::install(const QString &identifier, const QString &version)
{
    setState(identifier, stateIn(Phase::Installing, version));
    KRError error;
    if (!m_manager || !m_manager->installPluginWithIdentifier(identifier, version, &error)) {
        fail(identifier,
            error == KRError() ? Localizable::tr("Failure to install plugin.") : error.localizedDescription);
        return;
    }
    setState(identifier, stateIn(Phase::Installed, version));
    m_manager->reloadPlugins();
}

void PluginUpdatesController::cancel(const QString &identifier)
{
    if (!m_manager)
        return;
    if (m_waiting.removeAll(identifier) > 0) {
        showOffer(identifier);
    } else if (m_current == identifier) {
        m_isCancelled = true;
        m_manager->cancelDownloadingPluginVersions();
    }
}

void PluginUpdatesController::cancelAll()
{
    const auto waiting = m_waiting;
    for (const auto &identifier : waiting)
        cancel(identifier);
    if (const auto current = m_current)
        cancel(*current);
}

/// The user may have removed a plug-in, or installed a newer one by hand.
void PluginUpdatesController::pluginsReloaded()
{
    const auto plugins = m_manager->plugins();
    const auto known = m_states.keys();
    for (const auto &identifier : known) {
        if (!plugins.contains(identifier))
            forget(identifier);
    }
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin)
        reviewOffer(plugin.key());
}

void PluginUpdatesController::forget(const QString &identifier)
{
    cancel(identifier);
    m_states.remove(identifier);
    emit stateChanged(identifier);
}

void PluginUpdatesController::reviewOffer(const QString &identifier)
{
    const auto now = state(identifier);
    const bool isStale =
        now.phase == Phase::Failed && !now.version.isEmpty() && !offeredVersion(*m_manager, identifier);
    if (now.phase == Phase::Idle || now.phase == Phase::Available || isStale)
        showOffer(identifier);
}
