#pragma once

#include "platform/KRError.h"
#include "platform/PropertyListDictionary.h"

#include <QByteArray>

#include <optional>

/// The dictionary in a property-list file; nil when the file is missing, cannot be read or holds something else.
std::optional<PropertyListDictionary> readMetadata(const QByteArray &path);

/// What the writer knew of the file's content before.
enum class FileContent { Known, Unread };

/// Replaces the file as a whole. One that exists and could not be read before is kept beside it; when that fails,
/// nothing is written.
std::optional<KRError> writeMetadata(
    const QByteArray &path, const PropertyListDictionary &metadata, FileContent before);
