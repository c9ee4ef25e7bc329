#pragma once

#include "document/Document.h"

#include <QWidget>

#include <functional>

class QFormLayout;

/// A part of the inspector. It shows values of the first selected layer, and gives all selected ones what the user
/// enters; each entry is one step of undo.
class InspectorSection : public QWidget
{
    Q_OBJECT

public:
    InspectorSection(std::shared_ptr<Document> document, const QString &title, QWidget *parent = nullptr);
    ~InspectorSection() override;

    /// The selected layers, at least one.
    void setLayers(const QList<LayerPointer> &layers);

protected:
    /// Shows what the first layer has, and hides itself where it has nothing of that kind.
    virtual void showLayer(const Layer &layer) = 0;

    /// Where the section's rows are.
    QFormLayout &form() const { return *m_form; }
    void changeLayers(const QString &stepName, const std::function<void(Layer &)> &change);
    void changeStyle(const QString &key, const QVariant &value);
    const QList<LayerPointer> &layers() const { return m_layers; }

private:
    std::shared_ptr<Document> m_document;
    QFormLayout *m_form;
    QList<LayerPointer> m_layers;
};
