#pragma once

#include "document/Document.h"

#include <QVariantMap>

/// One of the keys that a document adds to the context of a handler.
struct DocumentContextKey
{
    const char *name;
    /// Of the value, in the words of TypeScript.
    const char *type;
    QVariant (*value)(const std::shared_ptr<Document> &document);
};

inline QVariant documentOfContext(const std::shared_ptr<Document> &document)
{
    return QVariant::fromValue(ScriptObjectPointer(document));
}

inline QVariant selectionOfContext(const std::shared_ptr<Document> &document)
{
    return scriptList(document->selection());
}

/// What a handler is given of a document: itself, and its selected layers.
inline constexpr DocumentContextKey documentContextKeys[] = {
    {"document", "Document", &documentOfContext},
    {"selection", "Layer[]", &selectionOfContext},
};

/// These, added to other keys.
inline QVariantMap contextWithDocument(QVariantMap context, const std::shared_ptr<Document> &document)
{
    for (const auto &key : documentContextKeys)
        context.insert(QString::fromLatin1(key.name), key.value(document));
    return context;
}
