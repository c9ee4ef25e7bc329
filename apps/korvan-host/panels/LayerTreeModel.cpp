#include "panels/LayerTreeModel.h"

#include "editing/LayerCommands.h"
#include "editing/LayerFrames.h"
#include "look/Icons.h"

#include <QMimeData>
#include <QSize>

#include <algorithm>

namespace {

const auto layersMimeType = QStringLiteral("application/x-korvan-layers");
constexpr int rowHeight = 26;

} // namespace

LayerTreeModel::LayerTreeModel(std::shared_ptr<Document> document)
    : m_document(std::move(document))
    , m_root(std::make_unique<Node>())
{
    const auto layers = m_document->layers();
    for (auto layer = layers.crbegin(); layer != layers.crend(); ++layer)
        m_root->children.push_back(makeNode(*layer, m_root.get()));
    m_observer = m_document->observe([this](const DocumentEvent &event) { documentChanged(event); });
}

LayerTreeModel::~LayerTreeModel() = default;

std::unique_ptr<LayerTreeModel::Node> LayerTreeModel::makeNode(const LayerPointer &layer, Node *parent)
{
    auto node = std::make_unique<Node>();
    node->layer = layer;
    node->name = layer->name();
    node->parent = parent;
    m_nodes.insert(layer.get(), node.get());
    const auto &layers = layer->layers();
    for (auto inner = layers.crbegin(); inner != layers.crend(); ++inner)
        node->children.push_back(makeNode(*inner, node.get()));
    return node;
}

void LayerTreeModel::forget(const Node &node)
{
    m_nodes.remove(node.layer.get());
    for (const auto &child : node.children)
        forget(*child);
}

LayerTreeModel::Node *LayerTreeModel::nodeOf(const LayerPointer &layer) const
{
    return layer ? m_nodes.value(layer.get()) : m_root.get();
}

LayerTreeModel::Node &LayerTreeModel::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? *static_cast<Node *>(index.internalPointer()) : *m_root;
}

int LayerTreeModel::rowOf(const Node &node)
{
    const auto &siblings = node.parent->children;
    const auto found =
        std::find_if(siblings.begin(), siblings.end(), [&node](const auto &sibling) { return sibling.get() == &node; });
    return int(found - siblings.begin());
}

QModelIndex LayerTreeModel::indexOfNode(const Node &node) const
{
    return &node == m_root.get() ? QModelIndex() : createIndex(rowOf(node), 0, &node);
}

/// The row that the layer's place in the document is shown in.
int LayerTreeModel::documentRowOf(const LayerPointer &layer) const
{
    const auto parent = layer->parent();
    const auto &siblings = parent ? parent->layers() : m_document->layers();
    return int(siblings.size() - 1 - siblings.lastIndexOf(layer));
}

void LayerTreeModel::documentChanged(const DocumentEvent &event)
{
    switch (event.kind) {
    case DocumentEvent::Kind::LayerAdded:
        return layerAdded(event.layer);
    case DocumentEvent::Kind::LayerRemoved:
        return layerRemoved(event.layer);
    case DocumentEvent::Kind::LayerMoved:
        return layerMoved(event.layer);
    case DocumentEvent::Kind::LayerChanged:
        return layerChanged(event.layer);
    default:
        return;
    }
}

void LayerTreeModel::layerAdded(const LayerPointer &layer)
{
    auto *const parent = nodeOf(layer->parent());
    if (!parent || m_nodes.contains(layer.get()))
        return;
    const auto row = std::clamp(documentRowOf(layer), 0, int(parent->children.size()));
    beginInsertRows(indexOfNode(*parent), row, row);
    parent->children.insert(parent->children.begin() + row, makeNode(layer, parent));
    endInsertRows();
}

void LayerTreeModel::layerRemoved(const LayerPointer &layer)
{
    auto *const node = m_nodes.value(layer.get());
    if (!node)
        return;
    auto &siblings = node->parent->children;
    const auto row = rowOf(*node);
    beginRemoveRows(indexOfNode(*node->parent), row, row);
    const auto removed = std::move(siblings[std::size_t(row)]);
    siblings.erase(siblings.begin() + row);
    forget(*removed);
    endRemoveRows();
}

void LayerTreeModel::layerMoved(const LayerPointer &layer)
{
    auto *const node = m_nodes.value(layer.get());
    auto *const parent = nodeOf(layer->parent());
    if (!node || !parent)
        return;
    const auto from = rowOf(*node);
    const bool isSameParent = parent == node->parent;
    const auto to = std::clamp(documentRowOf(layer), 0, int(parent->children.size()) - (isSameParent ? 1 : 0));
    if (isSameParent && from == to)
        return;
    // Qt counts the row that leaves; the document has it out already.
    const auto before = isSameParent && to > from ? to + 1 : to;
    beginMoveRows(indexOfNode(*node->parent), from, from, indexOfNode(*parent), before);
    auto &siblings = node->parent->children;
    auto moved = std::move(siblings[std::size_t(from)]);
    siblings.erase(siblings.begin() + from);
    moved->parent = parent;
    parent->children.insert(parent->children.begin() + to, std::move(moved));
    endMoveRows();
}

void LayerTreeModel::layerChanged(const LayerPointer &layer)
{
    auto *const node = m_nodes.value(layer.get());
    if (!node || node->name == layer->name())
        return;
    node->name = layer->name();
    const auto index = indexOfNode(*node);
    emit dataChanged(index, index);
}

LayerPointer LayerTreeModel::layerAt(const QModelIndex &index) const
{
    return nodeAt(index).layer;
}

QModelIndex LayerTreeModel::indexOf(const LayerPointer &layer) const
{
    const auto *const node = m_nodes.value(layer.get());
    return node ? indexOfNode(*node) : QModelIndex();
}

QModelIndex LayerTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const auto &children = nodeAt(parent).children;
    if (column != 0 || row < 0 || std::size_t(row) >= children.size())
        return {};
    return createIndex(row, column, children[std::size_t(row)].get());
}

QModelIndex LayerTreeModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOfNode(*nodeAt(child).parent) : QModelIndex();
}

int LayerTreeModel::rowCount(const QModelIndex &parent) const
{
    return int(nodeAt(parent).children.size());
}

int LayerTreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant LayerTreeModel::data(const QModelIndex &index, int role) const
{
    const auto layer = layerAt(index);
    if (!layer)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return layer->name().isEmpty() ? typeTitle(layer->type()) : layer->name();
    case Qt::EditRole:
        return layer->name();
    case Qt::DecorationRole:
        return layerIcon(layer->type());
    case Qt::SizeHintRole:
        return QSize(0, rowHeight);
    case Qt::AccessibleDescriptionRole:
        return typeTitle(layer->type());
    default:
        return {};
    }
}

bool LayerTreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const auto layer = layerAt(index);
    if (!layer || role != Qt::EditRole)
        return false;
    const DocumentHistory::Group step(*m_document, tr("Rename"));
    layer->setName(value.toString());
    return true;
}

Qt::ItemFlags LayerTreeModel::flags(const QModelIndex &index) const
{
    const auto layer = layerAt(index);
    if (!layer)
        return Qt::ItemIsDropEnabled; // the top level
    auto flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
    return layer->type() == u"group" ? flags | Qt::ItemIsDropEnabled : flags;
}

QStringList LayerTreeModel::mimeTypes() const
{
    return {layersMimeType};
}

QMimeData *LayerTreeModel::mimeData(const QModelIndexList &indexes) const
{
    QStringList ids;
    for (const auto &index : indexes)
        ids.append(layerAt(index)->id());
    auto *const data = new QMimeData;
    data->setData(layersMimeType, ids.join(u'\n').toUtf8());
    return data;
}

/// The outermost of the dragged layers, bottom first. Those of another document are in none of them.
QList<LayerPointer> LayerTreeModel::layersIn(const QMimeData &data) const
{
    const auto ids = QString::fromUtf8(data.data(layersMimeType)).split(u'\n', Qt::SkipEmptyParts);
    QList<LayerPointer> dragged;
    for (const auto &id : ids)
        dragged.append(m_document->layerWithID(id));
    dragged.removeAll(nullptr);
    return orderedOutermostOf(*m_document, dragged);
}

bool LayerTreeModel::canDropMimeData(
    const QMimeData *data, Qt::DropAction action, int, int, const QModelIndex &parent) const
{
    if (action != Qt::MoveAction || !data->hasFormat(layersMimeType))
        return false;
    const auto dragged = layersIn(*data);
    for (auto ancestor = layerAt(parent); ancestor; ancestor = ancestor->parent()) {
        if (dragged.contains(ancestor))
            return false;
    }
    return !dragged.isEmpty();
}

bool LayerTreeModel::dropMimeData(
    const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const auto dragged = layersIn(*data);
    const auto group = layerAt(parent);
    const auto siblings = group ? group->layers() : m_document->layers();
    // The layer that will be right below: the first one from the row on that is not dragged itself. On the group, and
    // not between its rows: above all of them.
    LayerPointer below;
    for (auto index = siblings.size() - 1 - std::max(row, 0); index >= 0 && !below; --index) {
        if (!dragged.contains(siblings[index]))
            below = siblings[index];
    }
    const DocumentHistory::Group step(*m_document, tr("Move Layers"));
    for (const auto &layer : dragged) {
        auto others = group ? group->layers() : m_document->layers();
        others.removeAll(layer);
        m_document->moveLayer(layer, group, others.indexOf(below) + 1);
        below = layer;
    }
    m_document->setSelection(dragged);
    return false;
}
