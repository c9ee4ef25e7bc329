#pragma once

#include "document/Document.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>

// Documents as JSON: {"name", "userInfo", "layers": [LAYER…], "selection": [layer id…]} with LAYER {"id", "name",
// "type", "frame", "style", "text", "userInfo", "layers": [LAYER…]}. Keys that this program does not know survive.

/// Reads a document. The error says what is wrong with the file, and nothing was made of it.
Result<std::shared_ptr<Document>> readDocument(const QString &path);
Result<std::shared_ptr<Document>> documentFromJSON(const QByteArray &json);

QByteArray jsonFromDocument(const Document &document);
/// The same of a document with nothing but these layers, which need not be at the top of their own.
QByteArray jsonFromLayers(const QList<LayerPointer> &layers);
/// Replaces the file whole or leaves it as it was. Nil on success.
std::optional<KRError> writeDocument(const Document &document, const QString &path);
