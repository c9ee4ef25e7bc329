#pragma once

#include <unistd.h>

#include <utility>

/// Owns an open file or folder of the system. -1: none; every call on it fails with EBADF.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    { }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    { }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { close(); }

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    /// Gives it away without closing it.
    int release() { return std::exchange(m_descriptor, -1); }
    /// False when the system kept bytes back until now and could not write them.
    bool close() { return m_descriptor < 0 || ::close(release()) == 0; }

private:
    int m_descriptor;
};
