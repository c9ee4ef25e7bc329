#pragma once

#include "platform/Export.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

/// What is told to observers: a name, and the object that posted it (compared by address only).
struct Notification
{
    QString name;
    const void *sender = nullptr;
};

class NotificationCenter;

/// Keeps one observation alive; destroying or resetting it ends the observation, also from inside a callback and also
/// after the centre is gone. It moves but is not copied: it has one owner.
class KORVAN_EXPORT NotificationObserver
{
public:
    using Callback = std::function<void(const Notification &)>;

    NotificationObserver() = default;
    NotificationObserver(NotificationObserver &&) noexcept = default;
    NotificationObserver &operator=(NotificationObserver &&) noexcept = default;
    NotificationObserver(const NotificationObserver &) = delete;
    NotificationObserver &operator=(const NotificationObserver &) = delete;
    ~NotificationObserver() = default;

    void reset() { m_callback.reset(); }

private:
    friend class NotificationCenter;
    explicit NotificationObserver(std::shared_ptr<Callback> callback)
        : m_callback(std::move(callback))
    { }

    std::shared_ptr<Callback> m_callback;
};

/// Tells observers by name that something has happened. Main thread only; callbacks run inside post(), in the order
/// in which the observers came.
class KORVAN_EXPORT NotificationCenter
{
public:
    /// Calls back for every notification of that name, from `sender` or, when it is null, from anybody.
    [[nodiscard]] NotificationObserver addObserver(
        const QString &name, const void *sender, NotificationObserver::Callback callback);

    /// Observers that come or go while it runs do not disturb it: a new one is not called for this notification, one
    /// that is gone is not called any more.
    void post(const Notification &notification);

private:
    struct Registration
    {
        QString name;
        const void *sender;
        std::weak_ptr<NotificationObserver::Callback> callback;
    };

    std::vector<Registration> m_registrations;
};
