#pragma once

#include "manager/KRPluginManager.h"

#include <QSet>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

/// Tells plug-ins what happens in the application: runs the handler of an action's key in every command of an enabled
/// plug-in that has one, in the order of the plug-ins' identifiers. docs/host-actions.md lists the actions.
class HostActions
{
public:
    explicit HostActions(KRPluginManager &manager);
    ~HostActions();
    HostActions(const HostActions &) = delete;
    HostActions &operator=(const HostActions &) = delete;

    /// The handlers run later, on the main queue. `context` is what they get beside the usual keys and the key itself,
    /// under "action".
    void tell(const QString &key, const QVariantMap &context = {});
    /// The same for the commands of some plug-ins only.
    void tellPlugins(const QSet<QString> &identifiers, const QString &key, const QVariantMap &context = {});
    /// Comes back when the handlers have returned; the user can do nothing meanwhile. What handlers wait for goes on
    /// afterwards.
    void tellAndWait(const QString &key, const QVariantMap &context = {});
    /// Tells the action with ".begin", waits, does the work, and tells the action with ".finish", with what the work
    /// has answered in addition to the context.
    void during(const QString &action, const QVariantMap &context, const std::function<QVariantMap()> &work);

    /// Whether handlers of actions are running now: what they change is nobody else's doing.
    bool isTelling() const { return *m_telling > 0; }

private:
    void run(const QList<KRPluginCommandSpecifier> &commands, const QString &key, QVariantMap context);

    KRPluginManager &m_manager;
    /// How many actions are being told; shared with what waits in the queue, which may outlive this object.
    std::shared_ptr<int> m_telling;
};
