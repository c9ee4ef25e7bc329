#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Result.h"

#include <QByteArray>

/// Copies a file, a link (as a link) or a folder with everything in it to a path where nothing is, and waits until it
/// is on the disk. Permissions, times and extended attributes are kept where the file system of the copy knows them;
/// the owner, and the right to run as somebody else, are not. Hard links become files of their own.
///
/// Answers the copy, locked from its first moment until the descriptor is closed, by which others tell it from what a
/// program that was killed has left; no descriptor for what is neither file nor folder. After a failure the part that
/// was copied is still there.
Result<FileDescriptor> copyItem(const QByteArray &from, const QByteArray &to);

/// Waits until a folder's own entries are on the disk.
[[nodiscard]] int flushFolder(const QByteArray &path);
