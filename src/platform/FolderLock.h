#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Result.h"

#include <QByteArray>

#include <chrono>

/// Keeps other processes, and other holders in this one, out of a folder that all of them lock before they change what
/// is in it. Nothing is written for it; it ends with the object, and with the process, however that ends.
class FolderLock
{
public:
    /// Waits for whoever holds it, at most so long. The error is `systemError`'s; EWOULDBLOCK: it was still held. A
    /// file system that knows no locks locks nothing out.
    static Result<FolderLock> lock(const QByteArray &folder, std::chrono::milliseconds longestWait);

private:
    explicit FolderLock(FileDescriptor descriptor)
        : m_descriptor(std::move(descriptor))
    { }

    FileDescriptor m_descriptor;
};
