#pragma once

#include "commands/UserInfoOwner.h"
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
    /// Takes the layer out, with everything in it. False when it is not in this document.
    bool removeLayer(LayerPointer layer);
    /// Moves the layer among its siblings; an index beyond the end counts as the end.
    void moveLayer(const LayerPointer &layer, qsizetype index);
    /// A copy of the layer with everything in it, right above it. Null when it is not in this document.
    LayerPointer duplicateLayer(const LayerPointer &layer);

    const ScriptClass &scriptClass() const override;

private:
    QList<LayerPointer> &siblingsOf(const LayerPointer &layer);
    bool contains(const LayerPointer &layer) const;
    void attach(const LayerPointer &layer);
    void detach(const LayerPointer &layer);
    QString unusedID() const;
    static LayerPointer detachedCopy(const Layer &layer);

    QVariantMap m_values;
    QList<LayerPointer> m_layers;
    QHash<QString, std::weak_ptr<Layer>> m_layersByID;
    QStringList m_selection;
};
