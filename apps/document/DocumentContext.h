#pragma once

#include "document/Document.h"

#include <QVariantMap>

/// What a handler is given of a document, added to other keys: the document under "document", its selected layers under
/// "selection".
inline QVariantMap contextWithDocument(QVariantMap context, const std::shared_ptr<Document> &document)
{
    context.insert(QStringLiteral("document"), QVariant::fromValue(ScriptObjectPointer(document)));
    context.insert(QStringLiteral("selection"), scriptList(document->selection()));
    return context;
}
