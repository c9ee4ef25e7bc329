#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

/// One event of a watched folder, as the system tells it; `mask` holds the system's bits (IN_CREATE and so on).
struct InotifyEvent
{
    /// -1 for the loss of events.
    int watch;
    quint32 mask;
    /// The entry that it is about; empty for the folder itself. Valid inside the call that hands it over.
    QByteArrayView name;
};

/// The system's facility for watching folders: one instance of it, of which a user has few (128 by default).
class Inotify
{
public:
    Inotify();
    ~Inotify();
    Inotify(const Inotify &) = delete;
    Inotify &operator=(const Inotify &) = delete;

    /// False when there was no instance left.
    bool isValid() const { return m_descriptor >= 0; }
    /// Readable while there are events.
    int descriptor() const { return m_descriptor; }

    /// The number of the watch of the folder that the path leads to, the same for every path to it; what `mask` asks
    /// for comes on top of what was asked for before. Negative when there is no such folder or no watch left.
    int add(const QByteArray &folder, quint32 mask);
    void remove(int watch);
    /// Hands over the events up to now, in their order; does not wait for any.
    void read(const std::function<void(const InotifyEvent &event)> &take);

private:
    int m_descriptor;
};
