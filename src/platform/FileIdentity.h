#pragma once

#include <QByteArray>

#include <optional>
#include <sys/types.h>

/// Which file, in which state, stands at a path: it changes whenever another one takes its place or it is written to.
struct FileIdentity
{
    dev_t device = 0;
    ino_t file = 0;
    qint64 nanoseconds = 0;
    qint64 size = 0;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// Of the file behind all links; nil when there is none.
std::optional<FileIdentity> identityOfFile(const QByteArray &path);
