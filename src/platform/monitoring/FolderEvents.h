#pragma once

#include "platform/monitoring/Inotify.h"

#include <QHash>
#include <QVarLengthArray>

#include <memory>

class ChangeDelivery;
class QSocketNotifier;

/// Hears of the events of folders.
class FolderEventReceiver
{
public:
    virtual void folderEvent(const InotifyEvent &event) = 0;
    /// The system has lost events: anything may have happened.
    virtual void eventsLost() = 0;

protected:
    ~FolderEventReceiver() = default;
};

/// The process's one instance of the system's facility, read on the main thread's event loop, and who hears of which
/// folder. It lives as long as somebody holds it. Main thread only.
class FolderEvents
{
public:
    FolderEvents();
    ~FolderEvents();
    FolderEvents(const FolderEvents &) = delete;
    FolderEvents &operator=(const FolderEvents &) = delete;

    /// Null when the system has no instance left, and without a QCoreApplication.
    static std::shared_ptr<FolderEvents> shared();
    /// Hands over the events up to now, if anybody listens.
    static void readPending();

    struct Held
    {
        /// Negative when the folder cannot be watched.
        int watch;
        /// Whether the receiver has not held it before.
        bool isNew;
    };

    /// Lets the receiver hear of a folder's events, until it releases the watch. Several receivers may hold one watch;
    /// each hears of what any of them has asked for.
    Held hold(const QByteArray &folder, quint32 mask, FolderEventReceiver &receiver);
    /// Does nothing for a negative number, and for a watch that has ended by itself (IN_IGNORED was its last event).
    void release(int watch, FolderEventReceiver &receiver);

    ChangeDelivery &delivery() { return *m_delivery; }

private:
    using Receivers = QVarLengthArray<FolderEventReceiver *, 2>;

    void read();
    void handOver(const InotifyEvent &event);
    void tellReceivers(const InotifyEvent &event, qsizetype count);
    void handOverLoss();
    void dropReleased(int watch);
    void end(QHash<int, Receivers>::iterator watch);

    Inotify m_inotify;
    QHash<int, Receivers> m_receivers;
    /// The watch whose receivers are being told; those that are released meanwhile leave a null pointer.
    int m_current = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::shared_ptr<ChangeDelivery> m_delivery;
};
