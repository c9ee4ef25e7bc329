#include "platform/monitoring/Inotify.h"

#include <array>
#include <cerrno>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

void handOver(const char *events, const char *end, const std::function<void(const InotifyEvent &)> &take)
{
    while (events < end) {
        const auto *event = reinterpret_cast<const inotify_event *>(events);
        events += sizeof(inotify_event) + event->len;
        // The name is filled up with NULs.
        take({event->wd, event->mask, QByteArrayView(event->name, qsizetype(::strnlen(event->name, event->len)))});
    }
}

} // namespace

Inotify::Inotify()
    : m_descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
{ }

Inotify::~Inotify()
{
    if (isValid())
        ::close(m_descriptor);
}

int Inotify::add(const QByteArray &folder, quint32 mask)
{
    if (folder.contains('\0'))
        return -1; // the system would watch another, shorter path
    return ::inotify_add_watch(m_descriptor, folder.constData(), mask | IN_ONLYDIR | IN_EXCL_UNLINK | IN_MASK_ADD);
}

void Inotify::remove(int watch)
{
    ::inotify_rm_watch(m_descriptor, watch);
}

void Inotify::read(const std::function<void(const InotifyEvent &)> &take)
{
    // As much as is there now: somebody who writes without end must not keep the reader here.
    int pending = 0;
    if (::ioctl(m_descriptor, FIONREAD, &pending) != 0)
        return;
    alignas(inotify_event) std::array<char, 65536> buffer;
    while (pending > 0) {
        const auto size = ::read(m_descriptor, buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR)
            continue;
        if (size <= 0)
            return;
        handOver(buffer.data(), buffer.data() + size, take);
        pending -= int(size);
    }
}
