#pragma once

#include "platform/script/ScriptObject.h"

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <vector>

/// The layers in a document or a group, each group before those in it, read at once: what a script would otherwise have
/// to ask of one after another. Main thread only.
class LayerRows
{
public:
    /// `root` has the operations of a document or a layer as OpenDocuments describes them.
    explicit LayerRows(const ScriptObjectPointer &root);

    /// Columns under their keys: an operation of layers ("name"), or "frame." or "style." with a key of that. Each has
    /// the different "values" and, for each row, the "places" of its value among them, as the bytes of 32-bit numbers.
    /// A value that a layer has not is null. "groups" is in the same form the row of the group around each, or -1.
    /// Before the rows of the layers inside of a group are those of the groups around it and the group; "first" is the
    /// first row inside.
    QVariantMap values(const QStringList &keys) const;

    /// The layers of those rows.
    QVariantList layersAt(const QVariantList &rows) const;
    /// All layers inside.
    QVariantList layers() const;

private:
    struct Row
    {
        ScriptObjectPointer layer;
        int group;
    };

    void appendGroupsAround(const ScriptObjectPointer &layer);
    void appendLayersOf(ScriptObject &root);
    QByteArray groups() const;
    QVariantMap column(const QString &key) const;

    std::vector<Row> m_rows;
    std::size_t m_first = 0;
};
