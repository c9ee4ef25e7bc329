#pragma once

#include "commands/UserInfoOwner.h"
#include "document/DocumentEvent.h"
#include "document/DocumentHistory.h"
#include "document/Layer.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

/// A design: a tree of layers, some of them selected. Held by shared pointers. Main thread only.
///
/// Whoever observes it hears of each change at once; its history takes them back.
class Document final : public UserInfoOwner
{
public:
    /// `values` are the document's keys as its file holds them, but for "layers" and "selection".
    explicit Document(const QVariantMap &values = {});

    QString name() const;
    void setName(const QString &name);
    /// What plug-ins keep on the document; nil when there is nothing.
    std::optional<QVariantMap> userInfo() const override;
    void setUserInfo(const std::optional<QVariantMap> &userInfo) override;
    /// All keys as they are saved, but for "layers" and "selection".
    const QVariantMap &values() const { return m_values; }

    /// The layers at the top level, bottom first.
    const QList<LayerPointer> &layers() const { return m_layers; }
    /// Every layer, each group before its own layers.
    QList<LayerPointer> allLayers() const;
    /// Null when there is none.
    LayerPointer layerWithID(const QString &id) const;

    /// The selected layers in the order in which they were selected.
    QList<LayerPointer> selection() const;
    /// Layers that are not in this document are left out.
    void setSelection(const QList<LayerPointer> &layers);

    /// Puts a layer that is in no document at the end of the parent's layers (of the top level for a null parent). It
    /// gets an identifier of its own where it has none or a taken one. False when the layer is in a document already,
    /// or the parent is not in this one.
    bool addLayer(const LayerPointer &layer, const LayerPointer &parent);
    /// The same, before the sibling of that index; beyond the end it counts as the end.
    bool insertLayer(const LayerPointer &layer, const LayerPointer &parent, qsizetype index);
    /// Takes the layer out, with everything in it. False when it is not in this document.
    bool removeLayer(LayerPointer layer);
    /// Moves the layer among its siblings; an index beyond the end counts as the end.
    void moveLayer(const LayerPointer &layer, qsizetype index);
    /// Moves the layer into the group (to the top level for a null parent), where it will have that index; one beyond
    /// the end counts as the end. False when one of them is not in this document, or the parent is the layer or inside
    /// it.
    bool moveLayer(const LayerPointer &layer, const LayerPointer &parent, qsizetype index);
    /// A copy of the layer with everything in it, right above it. Null when it is not in this document.
    LayerPointer duplicateLayer(const LayerPointer &layer);

    /// Calls back for each change, right after it, also for those of undo and redo. The callback may change the
    /// document and its observers.
    [[nodiscard]] DocumentObserver observe(DocumentObserver::Callback callback);
    DocumentHistory &history() { return m_history; }

    const ScriptClass &scriptClass() const override;

private:
    friend class Layer;
    friend class UndoStep;

    QList<LayerPointer> &layersIn(const LayerPointer &parent);
    LayerPlace placeOf(const LayerPointer &layer);
    bool contains(const LayerPointer &layer) const;
    /// The one way in which the tree changes; nil for "in no document".
    void place(const LayerPointer &layer, const std::optional<LayerPlace> &from, const std::optional<LayerPlace> &to);
    void attach(const LayerPointer &layer);
    void detach(const LayerPointer &layer);
    QString unusedID() const;
    static LayerPointer detachedCopy(const Layer &layer);
    void layerChanged(const LayerPointer &layer, const QVariantMap &replaced);
    void setValue(const QString &key, const QVariant &value);
    void exchangeValues(const LayerPointer &layer, QVariantMap &values);
    void exchangeValues(QVariantMap &values);
    void restoreSelection(const QStringList &selection);
    void tell(DocumentEvent::Kind kind, const LayerPointer &layer = nullptr);

    QVariantMap m_values;
    QList<LayerPointer> m_layers;
    QHash<QString, std::weak_ptr<Layer>> m_layersByID;
    QStringList m_selection;
    DocumentHistory m_history{*this};
    QList<std::weak_ptr<DocumentObserver::Callback>> m_observers;
};
