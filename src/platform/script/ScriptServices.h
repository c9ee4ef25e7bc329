#pragma once

#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptHost.h"

#include <functional>
#include <map>
#include <memory>

/// The native services of one session, each made when a core module first requires it, and what keeps the session
/// running for them.
class ScriptServices
{
public:
    /// Whoever converts what a service is into a script's value; null with `exception` set when that cannot be done.
    using Converter = std::function<JSValueRef(const QVariant &service, JSValueRef *exception)>;

    /// `onIdle` is called when nothing keeps the session running for a service any more.
    explicit ScriptServices(std::function<void()> onIdle);

    void setHosting(const std::weak_ptr<ScriptHosting> &hosting) { m_hosting = hosting; }
    std::shared_ptr<ScriptHosting> hosting() const { return m_hosting.lock(); }

    /// The service, made if need be. Null without `exception` when there is none of that name.
    JSValueRef service(const QString &name, const std::shared_ptr<ScriptHost> &host, JSContextRef context,
        const Converter &convert, JSValueRef *exception);

    std::shared_ptr<void> keepRunning();
    bool isWaitedFor() const { return m_state->waiting > 0; }

    /// Lets go of all services: the session ends.
    void end();

private:
    struct Service
    {
        QVariant value;
        ProtectedValue scriptValue;
    };
    /// Outlives the session for as long as somebody holds what keepRunning() has answered.
    struct State
    {
        int waiting = 0;
        std::function<void()> onIdle;
    };

    std::weak_ptr<ScriptHosting> m_hosting;
    std::map<QString, Service> m_services;
    std::shared_ptr<State> m_state;
};
