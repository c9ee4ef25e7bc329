#include "document/Document.h"

#include "platform/script/ScriptClass.h"

#include <algorithm>

namespace {

const auto nameKey = QStringLiteral("name");
const auto userInfoKey = QStringLiteral("userInfo");

void collect(const QList<LayerPointer> &layers, QList<LayerPointer> &all)
{
    for (const auto &layer : layers) {
        all.append(layer);
        collect(layer->layers(), all);
    }
}

} // namespace

Document::Document(const QVariantMap &values)
    : m_values(values)
{
    m_values.remove(QStringLiteral("layers"));
    m_values.remove(QStringLiteral("selection"));
}

QString Document::name() const
{
    return m_values.value(nameKey).toString();
}

void Document::setName(const QString &name)
{
    m_values.insert(nameKey, name);
}

std::optional<QVariantMap> Document::userInfo() const
{
    const auto value = m_values.value(userInfoKey);
    return value.typeId() == QMetaType::QVariantMap ? std::optional(value.toMap()) : std::nullopt;
}

void Document::setUserInfo(const std::optional<QVariantMap> &userInfo)
{
    if (userInfo && !userInfo->isEmpty())
        m_values.insert(userInfoKey, *userInfo);
    else
        m_values.remove(userInfoKey);
}

QList<LayerPointer> Document::allLayers() const
{
    QList<LayerPointer> all;
    collect(m_layers, all);
    return all;
}

LayerPointer Document::layerWithID(const QString &id) const
{
    return m_layersByID.value(id).lock();
}

QList<LayerPointer> Document::selection() const
{
    QList<LayerPointer> layers;
    for (const auto &id : m_selection) {
        if (const auto layer = layerWithID(id))
            layers.append(layer);
    }
    return layers;
}

void Document::setSelection(const QList<LayerPointer> &layers)
{
    m_selection.clear();
    for (const auto &layer : layers) {
        if (contains(layer) && !m_selection.contains(layer->id()))
            m_selection.append(layer->id());
    }
}

bool Document::contains(const LayerPointer &layer) const
{
    return layer && layer->document().get() == this;
}

QList<LayerPointer> &Document::siblingsOf(const LayerPointer &layer)
{
    const auto parent = layer->parent();
    return parent ? parent->m_layers : m_layers;
}

QString Document::unusedID() const
{
    auto number = m_layersByID.size() + 1;
    while (m_layersByID.contains(QStringLiteral("layer-%1").arg(number)))
        ++number;
    return QStringLiteral("layer-%1").arg(number);
}

/// Makes the layer and what is in it known to this document.
void Document::attach(const LayerPointer &layer)
{
    layer->m_document = std::static_pointer_cast<Document>(shared_from_this());
    if (layer->id().isEmpty() || m_layersByID.contains(layer->id()))
        layer->setID(unusedID());
    m_layersByID.insert(layer->id(), layer);
    for (const auto &inner : layer->layers())
        attach(inner);
}

void Document::detach(const LayerPointer &layer)
{
    layer->m_document.reset();
    m_layersByID.remove(layer->id());
    m_selection.removeAll(layer->id());
    for (const auto &inner : layer->layers())
        detach(inner);
}

bool Document::addLayer(const LayerPointer &layer, const LayerPointer &parent)
{
    if (layer->document() || (parent && !contains(parent)))
        return false;
    layer->m_parent = parent;
    siblingsOf(layer).append(layer);
    attach(layer);
    return true;
}

bool Document::removeLayer(LayerPointer layer) // by value: it may be an element of the list that it leaves
{
    if (!contains(layer))
        return false;
    siblingsOf(layer).removeAll(layer);
    layer->m_parent.reset();
    detach(layer);
    return true;
}

void Document::moveLayer(const LayerPointer &layer, qsizetype index)
{
    if (!contains(layer))
        return;
    auto &siblings = siblingsOf(layer);
    siblings.move(siblings.indexOf(layer), std::clamp<qsizetype>(index, 0, siblings.size() - 1));
}

/// A copy of the layer with everything in it, without identifiers and in no document.
LayerPointer Document::detachedCopy(const Layer &layer)
{
    auto values = layer.values();
    values.remove(QStringLiteral("id"));
    auto copy = std::make_shared<Layer>(values);
    for (const auto &inner : layer.layers()) {
        const auto innerCopy = detachedCopy(*inner);
        innerCopy->m_parent = copy;
        copy->m_layers.append(innerCopy);
    }
    return copy;
}

LayerPointer Document::duplicateLayer(const LayerPointer &layer)
{
    if (!contains(layer))
        return nullptr;
    // Before the list of siblings grows: `layer` may be one of its elements.
    const auto index = siblingsOf(layer).indexOf(layer) + 1;
    auto copy = detachedCopy(*layer);
    addLayer(copy, layer->parent());
    moveLayer(copy, index);
    return copy;
}

namespace {

// What scripts may call on a document.

QVariant userInfoOf(Document &document)
{
    const auto userInfo = document.userInfo();
    return userInfo ? QVariant(*userInfo) : QVariant::fromValue(nullptr);
}

QVariantList layersOf(Document &document)
{
    return scriptList(document.layers());
}

QVariantList allLayersOf(Document &document)
{
    return scriptList(document.allLayers());
}

QVariantList selectionOf(Document &document)
{
    return scriptList(document.selection());
}

void setSelectionOf(Document &document, const QVariantList &layers)
{
    QList<LayerPointer> selection;
    for (const auto &layer : layers)
        selection.append(std::dynamic_pointer_cast<Layer>(layer.value<ScriptObjectPointer>()));
    document.setSelection(selection);
}

LayerPointer addLayerWithValues(Document &document, const QVariantMap &values)
{
    auto layer = std::make_shared<Layer>(values);
    document.addLayer(layer, nullptr);
    return layer;
}

} // namespace

const ScriptClass &Document::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&Document::name>("name"),
        scriptOperation<&Document::setName>("setName"),
        scriptOperation<&userInfoOf>("userInfo"),
        scriptOperation<&layersOf>("layers"),
        scriptOperation<&allLayersOf>("allLayers"),
        scriptOperation<&Document::layerWithID>("layerWithID"),
        scriptOperation<&selectionOf>("selection"),
        scriptOperation<&setSelectionOf>("setSelection"),
        scriptOperation<&addLayerWithValues>("addLayer"),
    };
    static constexpr ScriptClass scriptClass{"Document", operations};
    return scriptClass;
}
