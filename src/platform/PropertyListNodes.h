#pragma once

#include "platform/KRError.h"

#include <QByteArray>
#include <QVariant>
#include <plist/plist.h>

#include <memory>
#include <optional>
#include <type_traits>

// The parser's own form of property lists, and the way from it to values and back.

struct PropertyListNodeReleaser
{
    void operator()(void *node) const;
};
using PropertyListNode = std::unique_ptr<std::remove_pointer_t<plist_t>, PropertyListNodeReleaser>;

/// What the parser has allocated besides nodes.
struct PropertyListMemoryReleaser
{
    void operator()(void *memory) const;
};
using PropertyListMemory = std::unique_ptr<char, PropertyListMemoryReleaser>;

/// Null for what is no property list, and for one that is beyond all bounds.
PropertyListNode nodeFromBytes(const QByteArray &bytes);
QByteArray xmlFromNode(plist_t node);

/// Parts of no type that is known are left out; nil when that is all.
QVariant variantFromNode(plist_t node);
/// Null for a value that no property list holds.
PropertyListNode nodeFromVariant(const QVariant &value);
/// A text as property lists keep it; nil for one that no XML holds (control characters, halves of surrogate pairs):
/// what is written has to be read again, by any reader.
std::optional<QByteArray> textForPropertyList(const QString &text);
