#pragma once

#include "document/Document.h"

#include <QAbstractItemModel>
#include <QHash>

#include <memory>

/// A document's layers as a tree, topmost first, as they lie above each other. Names can be edited, and layers dragged
/// to other places and into groups; each is one step of undo.
class LayerTreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit LayerTreeModel(std::shared_ptr<Document> document);
    ~LayerTreeModel() override;

    /// Null for an invalid index.
    LayerPointer layerAt(const QModelIndex &index) const;
    /// Invalid for a layer that is not in the document.
    QModelIndex indexOf(const LayerPointer &layer) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(
        const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) const override;
    /// Answers false also for what was moved: the view would remove the rows that it dragged.
    bool dropMimeData(
        const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) override;

private:
    /// A layer as the views know it: they hear of a change before it happens to their rows, the document tells it
    /// afterwards.
    struct Node
    {
        LayerPointer layer;
        /// As it is shown: most changes of layers are none of their names.
        QString name;
        Node *parent = nullptr;
        /// In the order of the rows.
        std::vector<std::unique_ptr<Node>> children;
    };

    void documentChanged(const DocumentEvent &event);
    void layerAdded(const LayerPointer &layer);
    void layerRemoved(const LayerPointer &layer);
    void layerMoved(const LayerPointer &layer);
    void layerChanged(const LayerPointer &layer);
    std::unique_ptr<Node> makeNode(const LayerPointer &layer, Node *parent);
    void forget(const Node &node);
    Node *nodeOf(const LayerPointer &layer) const;
    Node &nodeAt(const QModelIndex &index) const;
    QModelIndex indexOfNode(const Node &node) const;
    static int rowOf(const Node &node);
    int documentRowOf(const LayerPointer &layer) const;
    QList<LayerPointer> layersIn(const QMimeData &data) const;

    std::shared_ptr<Document> m_document;
    std::unique_ptr<Node> m_root;
    QHash<const Layer *, Node *> m_nodes;
    DocumentObserver m_observer;
};
