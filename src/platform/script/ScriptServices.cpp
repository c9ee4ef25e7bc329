#include "platform/script/ScriptServices.h"

#include <utility>

ScriptServices::ScriptServices(std::function<void()> onIdle)
    : m_state(std::make_shared<State>(State{0, std::move(onIdle)}))
{ }

JSValueRef ScriptServices::service(const QString &name, const std::shared_ptr<ScriptHost> &host, JSContextRef context,
    const Converter &convert, JSValueRef *exception)
{
    if (const auto known = m_services.find(name); known != m_services.end())
        return known->second.scriptValue.get();
    const auto hosting = m_hosting.lock();
    auto value = hosting ? hosting->hostService(name, host) : QVariant();
    if (!value.isValid())
        return nullptr;
    const auto scriptValue = convert(value, exception);
    if (scriptValue)
        m_services.emplace(name, Service{std::move(value), ProtectedValue(context, scriptValue)});
    return scriptValue;
}

std::shared_ptr<void> ScriptServices::keepRunning()
{
    ++m_state->waiting;
    const auto letGo = [state = m_state](void *) {
        if (--state->waiting == 0 && state->onIdle)
            state->onIdle();
    };
    return {m_state.get(), letGo};
}

void ScriptServices::end()
{
    m_state->onIdle = nullptr;
    std::exchange(m_services, {}).clear();
}
