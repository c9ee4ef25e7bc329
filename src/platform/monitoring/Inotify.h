#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

/// The kernel's queue of changes in folders. Folders are known to it by numbers, the same number for every path that
/// leads to the same folder.
class Inotify
{
public:
    struct Event
    {
        /// The folder's number; -1 when changes were lost.
        int number;
        std::uint32_t mask;
        /// The entry that it is about; empty when it is about the folder itself.
        QByteArray name;

        bool hasLostChanges() const;
        /// The number stands for no folder any more, or for one that is not in its place any more.
        bool isAboutTheEnd() const;
        /// An entry came, perhaps from elsewhere.
        bool isArrival() const;
        /// An entry went, perhaps to elsewhere.
        bool isDeparture() const;
        /// Only what a file holds has changed.
        bool isAboutContent() const;
        /// The kernel has dropped the number by itself.
        bool isDropped() const;
    };

    Inotify();
    ~Inotify();
    Inotify(const Inotify &) = delete;
    Inotify &operator=(const Inotify &) = delete;

    /// False when the system has none to spare; then no folder can be watched.
    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }

    /// Watches a folder from now on; links are followed. Nil, with the system's error number, when it cannot be
    /// watched.
    std::optional<int> add(const QByteArray &folder, int *error = nullptr);
    void remove(int number);
    /// What has happened since the last call, in order.
    std::vector<Event> takeEvents();

private:
    int m_descriptor;
};
