#pragma once

#include "document/Document.h"

#include <QScrollArea>

class ContentSection;
class InspectorSection;
class QLabel;

/// The selected layers' values, for reading and changing. Changes by others are shown once per turn of the event loop.
class Inspector final : public QScrollArea
{
    Q_OBJECT

public:
    explicit Inspector(std::shared_ptr<Document> document, QWidget *parent = nullptr);
    ~Inspector() override;

    /// Has the user enter the selected layer's text.
    void editText();

private:
    void refreshLater();
    void refresh();

    std::shared_ptr<Document> m_document;
    QLabel *m_nothing;
    ContentSection *m_content;
    QList<InspectorSection *> m_sections;
    bool m_isRefreshPlanned = false;
    QList<LayerPointer> m_shown;
    DocumentObserver m_observer;
};
