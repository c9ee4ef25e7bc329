#include "platform/monitoring/FolderEvents.h"

#include "platform/monitoring/ChangeDelivery.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <sys/inotify.h>

namespace {

std::weak_ptr<FolderEvents> &sharedEvents()
{
    static std::weak_ptr<FolderEvents> events;
    return events;
}

} // namespace

FolderEvents::FolderEvents()
    : m_delivery(std::make_shared<ChangeDelivery>())
{
    if (!m_inotify.isValid())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_inotify.descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

FolderEvents::~FolderEvents() = default;

std::shared_ptr<FolderEvents> FolderEvents::shared()
{
    if (auto events = sharedEvents().lock())
        return events;
    if (!QCoreApplication::instance())
        return nullptr;
    auto events = std::make_shared<FolderEvents>();
    if (!events->m_inotify.isValid())
        return nullptr;
    sharedEvents() = events;
    return events;
}

void FolderEvents::readPending()
{
    if (const auto events = sharedEvents().lock())
        events->read();
}

FolderEvents::Held FolderEvents::hold(const QByteArray &folder, quint32 mask, FolderEventReceiver &receiver)
{
    const int watch = m_inotify.add(folder, mask);
    if (watch < 0)
        return {watch, false};
    auto &receivers = m_receivers[watch];
    const bool isNew = !receivers.contains(&receiver);
    if (isNew)
        receivers.append(&receiver);
    return {watch, isNew};
}

void FolderEvents::release(int watch, FolderEventReceiver &receiver)
{
    const auto found = m_receivers.find(watch);
    if (found == m_receivers.end())
        return;
    if (watch == m_current) {
        found->replace(found->indexOf(&receiver), nullptr);
        return;
    }
    found->removeOne(&receiver);
    if (found->isEmpty())
        end(found);
}

void FolderEvents::end(QHash<int, Receivers>::iterator watch)
{
    m_inotify.remove(watch.key());
    m_receivers.erase(watch);
}

void FolderEvents::read()
{
    m_inotify.read([this](const InotifyEvent &event) { handOver(event); });
}

void FolderEvents::handOver(const InotifyEvent &event)
{
    if (event.mask & IN_Q_OVERFLOW)
        return handOverLoss();
    const auto found = m_receivers.constFind(event.watch);
    if (found == m_receivers.constEnd())
        return; // of a watch that was removed meanwhile
    m_current = event.watch;
    tellReceivers(event, found->size());
    m_current = -1;
    if (event.mask & IN_IGNORED)
        m_receivers.remove(event.watch);
    else
        dropReleased(event.watch);
}

/// One receiver may end another, and may let new ones come, which are not told.
void FolderEvents::tellReceivers(const InotifyEvent &event, qsizetype count)
{
    for (qsizetype i = 0; i < count; ++i) {
        if (auto *receiver = m_receivers.constFind(event.watch)->at(i))
            receiver->folderEvent(event);
    }
}

void FolderEvents::dropReleased(int watch)
{
    const auto found = m_receivers.find(watch);
    found->removeAll(nullptr);
    if (found->isEmpty())
        end(found);
}

void FolderEvents::handOverLoss()
{
    // Receivers only take note, so nobody ends here.
    for (const auto &receivers : std::as_const(m_receivers)) {
        for (auto *receiver : receivers)
            receiver->eventsLost();
    }
}
