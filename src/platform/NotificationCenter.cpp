#include "platform/NotificationCenter.h"

NotificationObserver NotificationCenter::addObserver(
    const QString &name, const void *sender, NotificationObserver::Callback callback)
{
    std::erase_if(m_registrations, [](const Registration &registration) { return registration.callback.expired(); });
    auto shared = std::make_shared<NotificationObserver::Callback>(std::move(callback));
    m_registrations.push_back({name, sender, shared});
    return NotificationObserver(std::move(shared));
}

void NotificationCenter::post(const Notification &notification)
{
    const auto registrations = m_registrations;
    for (const auto &registration : registrations) {
        const bool matches = registration.name == notification.name
            && (!registration.sender || registration.sender == notification.sender);
        if (!matches)
            continue;
        if (const auto callback = registration.callback.lock())
            (*callback)(notification);
    }
}
