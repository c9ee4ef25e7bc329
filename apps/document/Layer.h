#pragma once

#include "commands/UserInfoOwner.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <memory>
#include <optional>

class Document;
class Layer;

using LayerPointer = std::shared_ptr<Layer>;

/// The layers as a list that scripts can be given.
QVariantList scriptList(const QList<LayerPointer> &layers);

/// One layer of a document: a group with layers of its own, or a leaf. Owned by its parent layer or its document. Main
/// thread only.
class Layer final : public UserInfoOwner
{
public:
    /// `values` are the layer's keys as its file holds them, but for "layers". A missing "id" has to be given later.
    explicit Layer(const QVariantMap &values);

    QString id() const;
    QString name() const;
    void setName(const QString &name);
    /// "group", "rectangle", "oval", "text" or "image".
    QString type() const;
    /// "x", "y", "width" and "height" in points, as numbers.
    QVariantMap frame() const;
    /// Keys that are not given stay as they are.
    void setFrame(const QVariantMap &frame);
    QVariantMap style() const;
    void setStyle(const QVariantMap &style);
    /// All of them.
    static QStringList types();
    /// The keys of a style that mean something for layers of that type.
    static QStringList styleKeysOfType(const QString &type);
    /// Nil for a layer without text.
    std::optional<QString> text() const;
    void setText(const std::optional<QString> &text);
    /// The picture of an image layer, as a URL; nil when it has none.
    std::optional<QString> image() const;
    void setImage(const std::optional<QString> &image);
    /// What plug-ins keep on the layer; nil when there is nothing.
    std::optional<QVariantMap> userInfo() const override;
    void setUserInfo(const std::optional<QVariantMap> &userInfo) override;
    /// All keys as they are saved, but for "layers".
    const QVariantMap &values() const { return m_values; }

    const QList<LayerPointer> &layers() const { return m_layers; }
    /// Null at the document's top level, and for a layer that was removed.
    LayerPointer parent() const { return m_parent.lock(); }
    /// Null for a layer that is in no document.
    std::shared_ptr<Document> document() const { return m_document.lock(); }

    const ScriptClass &scriptClass() const override;

private:
    friend class Document; // which keeps the tree together

    std::optional<QString> textForKey(const QString &key) const;
    void setTextForKey(const QString &key, const std::optional<QString> &text);
    void setDictionary(const QString &key, const QVariantMap &dictionary);
    /// Where every change ends: the document, if there is one, hears of it.
    void setValues(QVariantMap values);

    QVariantMap m_values;
    QList<LayerPointer> m_layers;
    std::weak_ptr<Layer> m_parent;
    std::weak_ptr<Document> m_document;
};
