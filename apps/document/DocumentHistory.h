#pragma once

#include "document/Layer.h"
#include "platform/script/ScriptActivity.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

/// Where a layer stands: in which group (null for the document's top level), and before which sibling.
struct LayerPlace
{
    LayerPointer parent;
    qsizetype index = 0;
};

/// What the user takes back at once: the changes of one run of a command, or of one action of the host. It holds what
/// the changes have replaced, so its size is that of the changes, not of the document. Main thread only.
///
/// A host with an undo stack of its own wraps each step in one of that stack's commands: redo() does nothing for a step
/// that is done, so a stack that calls it when it takes the command in does no harm.
class UndoStep
{
public:
    UndoStep(const std::weak_ptr<Document> &document, QString text);

    /// Whose changes they are, in the user's words: a command's name.
    const QString &text() const { return m_text; }
    /// How many layers' values, places, and other values it holds.
    qsizetype size() const;
    bool isDone() const { return m_isDone; }
    /// Nothing when it is undone already, or the document is gone.
    void undo();
    /// Nothing when it is done already, or the document is gone.
    void redo();

private:
    friend class DocumentHistory;

    struct TreeChange
    {
        LayerPointer layer;
        /// Nil: in no document.
        std::optional<LayerPlace> from;
        std::optional<LayerPlace> to;
    };
    struct ReplacedValues
    {
        LayerPointer layer;
        QVariantMap values;
    };

    void exchangeValues(Document &document, const QStringList &selection);

    std::weak_ptr<Document> m_document;
    QString m_text;
    QList<TreeChange> m_treeChanges;
    QHash<const Layer *, ReplacedValues> m_layerValues;
    std::optional<QVariantMap> m_documentValues;
    std::optional<QStringList> m_selection;
    bool m_isDone = true;
};

/// A document's undo and redo. The changes of one run of a command are one step, as long as nothing else has changed
/// the document in between: what a long-running command does later then is a step of its own. So is each change by the
/// host, unless a Group holds several together. Main thread only.
class DocumentHistory
{
public:
    using StepHandler = std::function<void(const std::shared_ptr<UndoStep> &step)>;

    explicit DocumentHistory(Document &document)
        : m_document(document)
    { }
    DocumentHistory(const DocumentHistory &) = delete;
    DocumentHistory &operator=(const DocumentHistory &) = delete;

    /// What is changed while it lives is one step. Inside another one, or in a command's run, it adds nothing.
    class Group
    {
    public:
        Group(Document &document, const QString &text);
        ~Group();
        Group(const Group &) = delete;
        Group &operator=(const Group &) = delete;

    private:
        std::shared_ptr<Document> m_document;
    };

    bool canUndo() const { return !m_done.isEmpty(); }
    bool canRedo() const { return !m_undone.isEmpty(); }
    /// "" when there is nothing to undo.
    QString undoText() const;
    QString redoText() const;
    void undo();
    void redo();
    /// What comes next is a step of its own: something outside of the document has happened in between.
    void closeStep() { m_open.reset(); }
    /// Forgets all steps.
    void clear();

    /// Takes the steps from now on, each when its first change is about to be noted; they are not kept here then. Null
    /// keeps them here again.
    void setStepHandler(StepHandler handler);

private:
    friend class Document;
    friend class UndoStep;

    void noteTree(
        const LayerPointer &layer, const std::optional<LayerPlace> &from, const std::optional<LayerPlace> &to);
    void noteLayerValues(const LayerPointer &layer, const QVariantMap &replaced);
    void noteDocumentValues(const QVariantMap &replaced);
    /// Kept only for a command or a group: what the user selects between two actions is nothing to undo.
    void noteSelection(const QStringList &replaced);
    ScriptActivityPointer activity() const;
    UndoStep &stepForChange();
    void replay(const std::function<void()> &changes);

    Document &m_document;
    QList<std::shared_ptr<UndoStep>> m_done;
    QList<std::shared_ptr<UndoStep>> m_undone;
    StepHandler m_handler;
    /// The newest step while it still takes changes, those of this activity.
    std::shared_ptr<UndoStep> m_open;
    ScriptActivityPointer m_openActivity;
    ScriptActivityPointer m_group;
    int m_groupDepth = 0;
    bool m_isReplaying = false;
};
