#pragma once

#include "document/Document.h"

#include <QMap>
#include <QString>
#include <QStringList>

/// What a document looked like at one moment, to tell later what has changed.
class DocumentChanges
{
public:
    explicit DocumentChanges(const Document &before);

    /// A line for each layer that came ("+"), went ("-") or changed ("~").
    QStringList since(const Document &after) const;

private:
    QMap<QString, QString> m_before;
    QStringList m_order;
};

/// The document's layers as an indented outline.
QStringList outlineOf(const Document &document);
