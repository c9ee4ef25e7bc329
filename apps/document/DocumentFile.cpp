#include "document/DocumentFile.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"
#include "platform/JSONText.h"

#include <QFile>
#include <QSet>

namespace {

/// In bytes, of a file. A device could be read for ever.
constexpr qint64 largestDocument = 512 * 1024 * 1024;

const auto layersKey = QStringLiteral("layers");
const auto selectionKey = QStringLiteral("selection");
const auto idKey = QStringLiteral("id");

KRError fileError(const QString &message)
{
    return {QStringLiteral("document"), 0, message};
}

/// Builds a document from what its file holds, and says what is wrong with that.
class DocumentReader
{
public:
    Result<std::shared_ptr<Document>> read(const QVariant &root)
    {
        if (root.typeId() != QMetaType::QVariantMap)
            return fileError(QStringLiteral("A document is a JSON object."));
        const auto values = root.toMap();
        m_document = std::make_shared<Document>(values);
        addLayers(values.value(layersKey), nullptr);
        select(values.value(selectionKey));
        m_document->history().clear(); // a file as it was read is nothing to undo
        if (m_error)
            return *m_error;
        return m_document;
    }

private:
    void fail(const QString &message)
    {
        if (!m_error)
            m_error = fileError(message);
    }

    void addLayers(const QVariant &value, const LayerPointer &parent)
    {
        if (!value.isValid())
            return;
        if (value.typeId() != QMetaType::QVariantList)
            return fail(QStringLiteral("\"layers\" has to be an array."));
        const auto elements = value.toList();
        for (const auto &element : elements)
            addLayer(element, parent);
    }

    void addLayer(const QVariant &value, const LayerPointer &parent)
    {
        if (value.typeId() != QMetaType::QVariantMap)
            return fail(QStringLiteral("A layer has to be an object."));
        const auto values = value.toMap();
        const auto id = values.value(idKey);
        const bool isText = id.typeId() == QMetaType::QString;
        const bool isNumber = id.typeId() == QMetaType::LongLong || id.typeId() == QMetaType::Double;
        if (id.isValid() && !isText && !isNumber)
            return fail(QStringLiteral("A layer's \"id\" has to be a text or a number."));
        if (id.isValid() && m_document->layerWithID(id.toString()))
            return fail(QStringLiteral("Two layers have the id \"%1\".").arg(id.toString()));
        const auto layer = std::make_shared<Layer>(values);
        m_document->addLayer(layer, parent);
        addLayers(values.value(layersKey), layer);
    }

    void select(const QVariant &value)
    {
        if (!value.isValid())
            return;
        if (value.typeId() != QMetaType::QVariantList)
            return fail(QStringLiteral("\"selection\" has to be an array."));
        QList<LayerPointer> layers;
        const auto elements = value.toList();
        for (const auto &element : elements) {
            const auto layer = m_document->layerWithID(element.toString());
            if (!layer)
                return fail(QStringLiteral("The selected layer \"%1\" does not exist.").arg(element.toString()));
            layers.append(layer);
        }
        m_document->setSelection(layers);
    }

    std::shared_ptr<Document> m_document;
    std::optional<KRError> m_error;
};

QVariantList asValues(const QList<LayerPointer> &layers)
{
    QVariantList list;
    for (const auto &layer : layers) {
        auto values = layer->values();
        const bool hasLayers = layer->type() == u"group" || !layer->layers().isEmpty();
        if (hasLayers)
            values.insert(layersKey, asValues(layer->layers()));
        list.append(values);
    }
    return list;
}

} // namespace

Result<std::shared_ptr<Document>> documentFromJSON(const QByteArray &json)
{
    const auto root = variantFromJSON(json);
    if (!root)
        return root.error();
    return DocumentReader().read(root.value());
}

Result<std::shared_ptr<Document>> readDocument(const QString &path)
{
    const auto json = readFile(QFile::encodeName(path), largestDocument);
    if (!json) {
        const auto message = QStringLiteral("Cannot read the document \"%1\": %2");
        return fileError(message.arg(path, json.error().localizedDescription));
    }
    auto document = documentFromJSON(json.value());
    if (document)
        return document;
    const auto message = QStringLiteral("\"%1\" is no document: %2");
    return fileError(message.arg(path, document.error().localizedDescription));
}

QByteArray jsonFromDocument(const Document &document)
{
    auto values = document.values();
    values.insert(layersKey, asValues(document.layers()));
    QVariantList selection;
    const auto selected = document.selection();
    for (const auto &layer : selected)
        selection.append(layer->values().value(idKey));
    values.insert(selectionKey, selection);
    return jsonFromVariant(values, JSONStyle::Indented);
}

QByteArray jsonFromLayers(const QList<LayerPointer> &layers)
{
    return jsonFromVariant(QVariantMap{{layersKey, asValues(layers)}}, JSONStyle::Compact);
}

std::optional<KRError> writeDocument(const Document &document, const QString &path)
{
    const auto json = jsonFromDocument(document);
    const auto reread = variantFromJSON(json); // what nobody could open again must not replace what can be opened
    const auto error = reread ? replaceFileAtomically(QFile::encodeName(path), json) : std::optional(reread.error());
    if (!error)
        return std::nullopt;
    return fileError(QStringLiteral("Cannot write the document \"%1\": %2").arg(path, error->localizedDescription));
}
