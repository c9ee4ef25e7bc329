#pragma once

#include <QByteArray>

/// How many bytes of the array's own memory stand behind its end; 0 when the memory is not its own.
inline qsizetype spareRoomBehind(QByteArray bytes)
{
    // Not capacity() less size(): what was removed from the front is still part of the capacity.
    return bytes.data_ptr().freeSpaceAtEnd();
}
