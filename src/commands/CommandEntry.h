#pragma once

#include "platform/OrderedDictionary.h"

#include <QString>
#include <QVariant>

#include <optional>
#include <utility>
#include <vector>

/// A manifest's "handlers" as its author wrote them, in order. A function name that is no text is here by its text.
struct HandlerTable
{
    using Handlers = std::vector<std::pair<QString, QString>>;

    /// All but "actions".
    Handlers handlers;
    /// What "actions" holds; none unless it is a dictionary.
    Handlers actions;

    /// From any dictionary.
    static HandlerTable fromDictionary(const OrderedVariantDictionary &dictionary);
};

/// One element of a manifest's "commands" as its author wrote it: a plain value. What is missing or of another type
/// than the key asks for is nil.
struct CommandEntry
{
    std::optional<QString> script;
    std::optional<QString> name;
    std::optional<QString> identifier;
    std::optional<HandlerTable> handlers;
    std::optional<QString> handler;
    std::optional<QString> shortcut;
    std::optional<QString> scope;

    /// From a dictionary (QVariantMap, or OrderedVariantDictionary where the order of handlers matters). Nil for
    /// anything else.
    static std::optional<CommandEntry> fromVariant(const QVariant &value);
};
