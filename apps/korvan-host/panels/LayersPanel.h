#pragma once

#include "panels/LayerTreeModel.h"

#include <QTreeView>

/// The list of layers. What is selected in it is selected in the document, and the other way round.
class LayersPanel final : public QTreeView
{
    Q_OBJECT

public:
    explicit LayersPanel(std::shared_ptr<Document> document, QWidget *parent = nullptr);
    ~LayersPanel() override;

    LayerTreeModel &layerModel() { return m_model; }

private:
    void takeSelectionOver();
    void showSelection();
    void showSelectionLater();

    std::shared_ptr<Document> m_document;
    LayerTreeModel m_model;
    bool m_isTakingOver = false;
    bool m_isShowing = false;
    bool m_isShowPlanned = false;
    DocumentObserver m_observer;
};
