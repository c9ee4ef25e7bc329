#pragma once

#include "platform/OrderedDictionary.h"

#include <QString>
#include <QVariant>

#include <optional>

/// One element of a manifest's "commands" as its author wrote it: a plain value. What is missing or of another type
/// than the key asks for is nil.
struct CommandEntry
{
    std::optional<QString> script;
    std::optional<QString> name;
    std::optional<QString> identifier;
    std::optional<OrderedVariantDictionary> handlers;
    std::optional<QString> handler;
    std::optional<QString> shortcut;
    std::optional<QString> scope;

    /// From a dictionary (QVariantMap, or OrderedVariantDictionary where the order of handlers matters). Nil for
    /// anything else.
    static std::optional<CommandEntry> fromVariant(const QVariant &value);
};

/// A dictionary's entries in order, whichever kind of dictionary it is; nil when the value is none.
std::optional<OrderedVariantDictionary> orderedDictionary(const QVariant &value);
