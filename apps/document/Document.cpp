#include "document/Document.h"

#include <QSet>

#include <algorithm>
#include <limits>
#include <utility>

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
    setValue(nameKey, name);
}

std::optional<QVariantMap> Document::userInfo() const
{
    const auto value = m_values.value(userInfoKey);
    return value.typeId() == QMetaType::QVariantMap ? std::optional(value.toMap()) : std::nullopt;
}

void Document::setUserInfo(const std::optional<QVariantMap> &userInfo)
{
    setValue(userInfoKey, userInfo && !userInfo->isEmpty() ? QVariant(*userInfo) : QVariant());
}

void Document::setValue(const QString &key, const QVariant &value)
{
    auto values = m_values;
    if (value.isValid())
        values.insert(key, value);
    else
        values.remove(key);
    if (values == m_values)
        return;
    m_history.noteDocumentValues(std::exchange(m_values, std::move(values)));
    tell(DocumentEvent::Kind::DocumentChanged);
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
    QStringList selection;
    QSet<QString> known;
    for (const auto &layer : layers) {
        if (!contains(layer) || known.contains(layer->id()))
            continue;
        known.insert(layer->id());
        selection.append(layer->id());
    }
    if (selection == m_selection)
        return;
    m_history.noteSelection(std::exchange(m_selection, selection));
    tell(DocumentEvent::Kind::SelectionChanged);
}

bool Document::contains(const LayerPointer &layer) const
{
    return layer && layer->document().get() == this;
}

QList<LayerPointer> &Document::layersIn(const LayerPointer &parent)
{
    return parent ? parent->m_layers : m_layers;
}

LayerPlace Document::placeOf(const LayerPointer &layer)
{
    const auto parent = layer->parent();
    return {parent, layersIn(parent).indexOf(layer)};
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
        layer->m_values.insert(QStringLiteral("id"), unusedID());
    m_layersByID.insert(layer->id(), layer);
    for (const auto &inner : layer->layers())
        attach(inner);
}

void Document::detach(const LayerPointer &layer)
{
    layer->m_document.reset();
    m_layersByID.remove(layer->id());
    if (m_selection.contains(layer->id())) {
        m_history.noteSelection(m_selection);
        m_selection.removeAll(layer->id());
    }
    for (const auto &inner : layer->layers())
        detach(inner);
}

void Document::place(
    const LayerPointer &layer, const std::optional<LayerPlace> &from, const std::optional<LayerPlace> &to)
{
    const auto selectedBefore = m_selection.size();
    if (from)
        layersIn(from->parent).removeAt(from->index);
    layer->m_parent.reset();
    if (to) {
        layersIn(to->parent).insert(to->index, layer);
        layer->m_parent = to->parent;
    }
    if (!from)
        attach(layer);
    else if (!to)
        detach(layer);
    m_history.noteTree(layer, from, to);
    if (!from)
        tell(DocumentEvent::Kind::LayerAdded, layer);
    else
        tell(to ? DocumentEvent::Kind::LayerMoved : DocumentEvent::Kind::LayerRemoved, layer);
    if (m_selection.size() != selectedBefore)
        tell(DocumentEvent::Kind::SelectionChanged);
}

bool Document::addLayer(const LayerPointer &layer, const LayerPointer &parent)
{
    return insertLayer(layer, parent, std::numeric_limits<qsizetype>::max());
}

bool Document::insertLayer(const LayerPointer &layer, const LayerPointer &parent, qsizetype index)
{
    if (layer->document() || (parent && !contains(parent)))
        return false;
    place(layer, std::nullopt, LayerPlace{parent, std::clamp<qsizetype>(index, 0, layersIn(parent).size())});
    return true;
}

bool Document::removeLayer(LayerPointer layer) // by value: it may be an element of the list that it leaves
{
    if (!contains(layer))
        return false;
    const DocumentHistory::Group group(*this, {});
    place(layer, placeOf(layer), std::nullopt);
    return true;
}

void Document::moveLayer(const LayerPointer &layer, qsizetype index)
{
    if (contains(layer))
        moveLayer(layer, layer->parent(), index);
}

bool Document::moveLayer(const LayerPointer &layer, const LayerPointer &parent, qsizetype index)
{
    if (!contains(layer) || (parent && !contains(parent)))
        return false;
    for (auto ancestor = parent; ancestor; ancestor = ancestor->parent()) {
        if (ancestor == layer)
            return false;
    }
    const auto moved = layer; // it may be an element of the list that it leaves
    const auto from = placeOf(moved);
    const auto last = layersIn(parent).size() - (from.parent == parent ? 1 : 0);
    const LayerPlace to{parent, std::clamp<qsizetype>(index, 0, last)};
    if (to.parent != from.parent || to.index != from.index)
        place(moved, from, to);
    return true;
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
    const auto place = placeOf(layer);
    auto copy = detachedCopy(*layer);
    insertLayer(copy, place.parent, place.index + 1);
    return copy;
}

void Document::layerChanged(const LayerPointer &layer, const QVariantMap &replaced)
{
    m_history.noteLayerValues(layer, replaced);
    tell(DocumentEvent::Kind::LayerChanged, layer);
}

void Document::exchangeValues(const LayerPointer &layer, QVariantMap &values)
{
    std::swap(layer->m_values, values);
    tell(DocumentEvent::Kind::LayerChanged, layer);
}

void Document::exchangeValues(QVariantMap &values)
{
    std::swap(m_values, values);
    tell(DocumentEvent::Kind::DocumentChanged);
}

void Document::restoreSelection(const QStringList &selection)
{
    m_selection = selection;
    tell(DocumentEvent::Kind::SelectionChanged);
}

DocumentObserver Document::observe(DocumentObserver::Callback callback)
{
    m_observers.removeIf([](const auto &observer) { return observer.expired(); });
    auto shared = std::make_shared<DocumentObserver::Callback>(std::move(callback));
    m_observers.append(shared);
    return DocumentObserver(shared);
}

void Document::tell(DocumentEvent::Kind kind, const LayerPointer &layer)
{
    if (m_observers.isEmpty())
        return;
    const auto self = weak_from_this().lock(); // which an observer may be the last to hold
    const auto observers = m_observers;
    for (const auto &observer : observers) {
        if (const auto callback = observer.lock())
            (*callback)({kind, layer});
    }
}
