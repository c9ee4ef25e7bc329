#pragma once

#include "platform/FileIdentity.h"
#include "platform/KRError.h"
#include "platform/PropertyListDictionary.h"

#include <QByteArray>

#include <optional>

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
