#pragma once

#include <unistd.h>
#include <utility>

/// Owns an open file of the system; closes it at its end.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    { }
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(other.release())
    { }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        if (this != &other) {
            close();
            m_descriptor = other.release();
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    /// Gives it away without closing it.
    int release() { return std::exchange(m_descriptor, -1); }
    void close()
    {
        if (isOpen())
            ::close(release());
    }

private:
    int m_descriptor = -1;
};
