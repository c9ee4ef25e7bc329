#pragma once

#include "widgets/Export.h"
#include "widgets/plugins/PluginUpdateState.h"
#include "widgets/plugins/TransferSpeed.h"

#include "platform/NotificationCenter.h"
#include "updates/PluginDownloadProgress.h"
#include "updates/PluginUpdateHandlers.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>
#include <optional>

class KRPluginManager;
class ProgressRelay;
class ReportingUpdater;

/// Checks for updates, downloads and installs them, and knows how far each plug-in's has come; shows nothing itself.
/// Main thread only.
///
/// Give the manager a ReportingUpdater: with another one, downloads tell neither their progress nor why they fail. The
/// controller takes that updater's progress handler. Updates are downloaded one at a time, so that each of them can be
/// cancelled by itself; what was downloaded is installed at once, and the plug-ins are reloaded.
class KORVAN_WIDGETS_EXPORT PluginUpdatesController final : public QObject
{
    Q_OBJECT

public:
    /// Begins with what earlier checks have found. The manager may go first; nothing happens then any more.
    explicit PluginUpdatesController(KRPluginManager &manager, QObject *parent = nullptr);
    /// What is being downloaded goes on into the warehouse.
    ~PluginUpdatesController() override;

    PluginUpdateState state(const QString &identifier) const { return m_states.value(identifier); }
    bool isChecking() const { return m_isChecking; }
    /// Plug-ins whose update is available and has not begun.
    QStringList available() const;
    /// Plug-ins whose update has begun.
    QStringList underWay() const;

    /// Reads all feeds. Nothing while that is under way.
    void check();
    /// Begins with what is available, or tries again what has failed. Nothing otherwise.
    void update(const QString &identifier);
    void updateAll();
    /// Nothing when it is being installed already.
    void cancel(const QString &identifier);
    void cancelAll();

signals:
    void stateChanged(const QString &identifier);
    /// A check has begun or ended.
    void checkingChanged(bool isChecking);

private:
    std::shared_ptr<ReportingUpdater> reportingUpdater() const;
    template <class Predicate>
    QStringList identifiersWith(Predicate predicate) const;
    void setState(const QString &identifier, const PluginUpdateState &state);
    void fail(const QString &identifier, const QString &message);
    void showOffer(const QString &identifier);
    void feedRead(const QString &identifier, const std::optional<KRError> &error);
    void checkEnded();
    void begin(const QString &identifier);
    void beginNext();
    void download(const QString &identifier, const QString &version);
    void progressed(const PluginDownloadProgress &progress);
    void downloadEnded(const std::optional<QList<KRError>> &errors);
    void install(const QString &identifier, const QString &version);
    void pluginsReloaded();
    void forget(const QString &identifier);
    void reviewOffer(const QString &identifier);

    QPointer<KRPluginManager> m_manager;
    QHash<QString, PluginUpdateState> m_states;
    bool m_isChecking = false;
    QStringList m_waiting;
    /// What is being downloaded; nil for nothing.
    std::optional<QString> m_current;
    bool m_isCancelled = false;
    TransferSpeed m_speed;
    std::shared_ptr<ProgressRelay> m_relay;
    NotificationObserver m_reloadObserver;
};
