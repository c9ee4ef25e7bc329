#pragma once

#include "platform/KRError.h"
#include "platform/PropertyListDictionary.h"

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

/// A dictionary, and the file that it was read from; nil for none.
struct PluginMetadata
{
    PropertyListDictionary dictionary;
    std::optional<FileIdentity> source;
};

/// The dictionary in a property-list file; nil when the file is missing, cannot be read or holds something else.
std::optional<PluginMetadata> readMetadata(const QByteArray &path);

/// Replaces the file as a whole. One that cannot be read, and is not the one that the dictionary was read from, is kept
/// beside it; when that fails, nothing is written.
std::optional<KRError> writeMetadata(const QByteArray &path, const PluginMetadata &metadata);
