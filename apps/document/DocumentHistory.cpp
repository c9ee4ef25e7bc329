#include "document/DocumentHistory.h"

#include "document/Document.h"

#include <utility>

namespace {

/// Older steps are forgotten.
constexpr qsizetype longestHistory = 200;

} // namespace

UndoStep::UndoStep(const std::weak_ptr<Document> &document, QString text)
    : m_document(document)
    , m_text(std::move(text))
{ }

qsizetype UndoStep::size() const
{
    return m_treeChanges.size() + m_layerValues.size() + int(m_documentValues.has_value())
        + int(m_selection.has_value());
}

void UndoStep::undo()
{
    const auto document = m_document.lock();
    if (!document || !std::exchange(m_isDone, false))
        return;
    document->history().replay([&] {
        const auto selection = document->m_selection; // which the changes of the tree change too
        for (auto change = m_treeChanges.crbegin(); change != m_treeChanges.crend(); ++change)
            document->place(change->layer, change->to, change->from);
        exchangeValues(*document, selection);
    });
}

void UndoStep::redo()
{
    const auto document = m_document.lock();
    if (!document || std::exchange(m_isDone, true))
        return;
    document->history().replay([&] {
        const auto selection = document->m_selection; // which the changes of the tree change too
        for (const auto &change : std::as_const(m_treeChanges))
            document->place(change.layer, change.from, change.to);
        exchangeValues(*document, selection);
    });
}

/// Puts back what was replaced, and keeps what that replaces: the way there is the way back.
void UndoStep::exchangeValues(Document &document, const QStringList &selection)
{
    for (auto &replaced : m_layerValues)
        document.exchangeValues(replaced.layer, replaced.values);
    if (m_documentValues)
        document.exchangeValues(*m_documentValues);
    if (m_selection) {
        document.restoreSelection(*m_selection);
        m_selection = selection;
    }
}

DocumentHistory::Group::Group(Document &document, const QString &text)
    : m_document(std::static_pointer_cast<Document>(document.shared_from_this()))
{
    auto &history = m_document->history();
    if (history.m_groupDepth++ > 0)
        return;
    const auto running = currentScriptActivity();
    history.m_group = running ? running : std::make_shared<const ScriptActivity>(ScriptActivity{text});
}

DocumentHistory::Group::~Group()
{
    auto &history = m_document->history();
    if (--history.m_groupDepth == 0)
        history.m_group.reset();
}

QString DocumentHistory::undoText() const
{
    return m_done.isEmpty() ? QString() : m_done.last()->text();
}

QString DocumentHistory::redoText() const
{
    return m_undone.isEmpty() ? QString() : m_undone.last()->text();
}

void DocumentHistory::undo()
{
    if (m_done.isEmpty())
        return;
    const auto step = m_done.takeLast();
    m_undone.append(step);
    step->undo();
}

void DocumentHistory::redo()
{
    if (m_undone.isEmpty())
        return;
    const auto step = m_undone.takeLast();
    m_done.append(step);
    step->redo();
}

void DocumentHistory::clear()
{
    closeStep();
    m_done.clear();
    m_undone.clear();
}

void DocumentHistory::setStepHandler(StepHandler handler)
{
    clear();
    m_handler = std::move(handler);
}

void DocumentHistory::noteTree(
    const LayerPointer &layer, const std::optional<LayerPlace> &from, const std::optional<LayerPlace> &to)
{
    if (!m_isReplaying)
        stepForChange().m_treeChanges.append({layer, from, to});
}

void DocumentHistory::noteLayerValues(const LayerPointer &layer, const QVariantMap &replaced)
{
    if (m_isReplaying)
        return;
    auto &values = stepForChange().m_layerValues;
    if (!values.contains(layer.get())) // what a step has replaced first is what its undoing brings back
        values.insert(layer.get(), {layer, replaced});
}

void DocumentHistory::noteDocumentValues(const QVariantMap &replaced)
{
    if (m_isReplaying)
        return;
    auto &values = stepForChange().m_documentValues;
    values = values.value_or(replaced);
}

void DocumentHistory::noteSelection(const QStringList &replaced)
{
    if (m_isReplaying || !activity())
        return;
    auto &selection = stepForChange().m_selection;
    selection = selection.value_or(replaced);
}

ScriptActivityPointer DocumentHistory::activity() const
{
    return m_group ? m_group : currentScriptActivity();
}

UndoStep &DocumentHistory::stepForChange()
{
    const auto current = activity();
    if (m_open && current && current == m_openActivity)
        return *m_open;
    const auto document = std::static_pointer_cast<Document>(m_document.shared_from_this());
    const auto step = std::make_shared<UndoStep>(document, current ? current->name : QString());
    if (m_handler) {
        m_handler(step);
    } else {
        m_undone.clear();
        m_done.append(step);
        if (m_done.size() > longestHistory)
            m_done.removeFirst();
    }
    m_open = step;
    m_openActivity = current;
    return *step;
}

void DocumentHistory::replay(const std::function<void()> &changes)
{
    closeStep();
    const bool wasReplaying = std::exchange(m_isReplaying, true);
    changes();
    m_isReplaying = wasReplaying;
}
