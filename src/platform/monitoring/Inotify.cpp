#include "platform/monitoring/Inotify.h"

#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t arrivals = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t departures = IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t ends = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;
constexpr std::uint32_t contents = IN_MODIFY | IN_CLOSE_WRITE;
/// The same for every folder: the kernel keeps one mask for all paths that lead to it.
constexpr std::uint32_t watched =
    arrivals | departures | IN_DELETE_SELF | IN_MOVE_SELF | contents | IN_ATTRIB | IN_ONLYDIR | IN_EXCL_UNLINK;

void appendEvents(const char *bytes, ssize_t size, std::vector<Inotify::Event> &events)
{
    for (ssize_t position = 0; position < size;) {
        inotify_event event;
        std::memcpy(&event, bytes + position, sizeof event);
        const char *const name = bytes + position + sizeof event;
        events.push_back({event.wd, event.mask, event.len > 0 ? QByteArray(name) : QByteArray()});
        position += ssize_t(sizeof event + event.len);
    }
}

} // namespace

bool Inotify::Event::hasLostChanges() const
{
    return (mask & IN_Q_OVERFLOW) != 0;
}

bool Inotify::Event::isAboutTheEnd() const
{
    return (mask & ends) != 0;
}

bool Inotify::Event::isArrival() const
{
    return (mask & arrivals) != 0;
}

bool Inotify::Event::isDeparture() const
{
    return (mask & departures) != 0;
}

bool Inotify::Event::isAboutContent() const
{
    return (mask & contents) != 0;
}

bool Inotify::Event::isDropped() const
{
    return (mask & IN_IGNORED) != 0;
}

Inotify::Inotify()
    : m_descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
{ }

Inotify::~Inotify()
{
    if (isOpen())
        ::close(m_descriptor);
}

std::optional<int> Inotify::add(const QByteArray &folder, int *error)
{
    const int number = ::inotify_add_watch(m_descriptor, folder.constData(), watched);
    if (number >= 0)
        return number;
    if (error)
        *error = errno;
    return std::nullopt;
}

void Inotify::remove(int number)
{
    ::inotify_rm_watch(m_descriptor, number);
}

std::vector<Inotify::Event> Inotify::takeEvents()
{
    std::vector<Event> events;
    alignas(inotify_event) char buffer[65536];
    for (;;) {
        const auto size = ::read(m_descriptor, buffer, sizeof buffer);
        if (size > 0)
            appendEvents(buffer, size, events);
        else if (size == 0 || errno != EINTR)
            return events;
    }
}
