#pragma once

#include "document/Document.h"
#include "plugins/HostActions.h"

#include <chrono>
#include <optional>

/// Tells plug-ins of one document's changes: "SelectionChanged" and "DocumentChanged" (also as the handler
/// "onDocumentChanged"), each at most once per turn of the event loop.
///
/// What handlers of actions change themselves is not told: a handler that changes the selection would be called for
/// ever. Changes that scripts make later, from timers and promises, are told a few times in a second at most.
class DocumentWatch
{
public:
    DocumentWatch(HostActions &actions, std::shared_ptr<Document> document);
    ~DocumentWatch();

    /// Until release(), nothing of the document's layers is told: they are being dragged.
    void hold() { ++m_holds; }
    void release();

private:
    /// How often an action may be told while nobody but scripts causes it.
    class Budget
    {
    public:
        /// Whether it may be told now, and that it is.
        bool take();

    private:
        std::chrono::milliseconds m_latest{0};
        int m_told = 0;
    };

    void documentChanged(const DocumentEvent &event);
    void noteSelection();
    void noteChange(const DocumentEvent &event);
    void flushLater();
    void flush();
    QVariantMap context() const;

    HostActions &m_actions;
    std::shared_ptr<Document> m_document;
    int m_holds = 0;
    bool m_isFlushPlanned = false;
    QList<LayerPointer> m_knownSelection;
    /// What was selected before the change that waits to be told; nil when none does.
    std::optional<QList<LayerPointer>> m_oldSelection;
    QVariantList m_changes;
    Budget m_selectionBudget;
    Budget m_changesBudget;
    std::shared_ptr<char> m_life;
    DocumentObserver m_observer;
};
