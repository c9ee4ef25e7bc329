#include "plugins/DocumentWatch.h"

#include "commands/KRPluginCommandKeys.h"
#include "document/DocumentContext.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/script/ScriptActivity.h"

namespace {

/// Else a command that changes thousands of layers would make a list of thousands for its handlers.
constexpr qsizetype mostChanges = 1000;

QString nameOf(DocumentEvent::Kind kind)
{
    switch (kind) {
    case DocumentEvent::Kind::LayerAdded:
        return QStringLiteral("added");
    case DocumentEvent::Kind::LayerRemoved:
        return QStringLiteral("removed");
    case DocumentEvent::Kind::LayerMoved:
        return QStringLiteral("moved");
    case DocumentEvent::Kind::LayerChanged:
        return QStringLiteral("changed");
    default:
        return QStringLiteral("document");
    }
}

} // namespace

bool DocumentWatch::Budget::take()
{
    constexpr std::chrono::seconds window(1);
    constexpr int mostInWindow = 3;
    const auto now = LTAppEnvironment::current().mainQueue().now();
    if (!currentScriptActivity() || now - m_latest > window) {
        m_latest = now;
        m_told = 0;
    }
    return m_told++ < mostInWindow;
}

DocumentWatch::DocumentWatch(HostActions &actions, std::shared_ptr<Document> document)
    : m_actions(actions)
    , m_document(std::move(document))
    , m_knownSelection(m_document->selection())
    , m_life(std::make_shared<char>())
    , m_observer(m_document->observe([this](const DocumentEvent &event) { documentChanged(event); }))
{ }

DocumentWatch::~DocumentWatch() = default;

QVariantMap DocumentWatch::context() const
{
    return contextWithDocument({}, m_document);
}

void DocumentWatch::documentChanged(const DocumentEvent &event)
{
    if (event.kind == DocumentEvent::Kind::SelectionChanged)
        noteSelection();
    else if (!m_actions.isTelling())
        noteChange(event);
}

void DocumentWatch::noteSelection()
{
    const auto before = std::exchange(m_knownSelection, m_document->selection());
    if (m_actions.isTelling() || m_oldSelection || !m_selectionBudget.take())
        return;
    m_oldSelection = before;
    auto begun = context();
    begun.insert(QStringLiteral("oldSelection"), scriptList(before));
    m_actions.tell(QStringLiteral("SelectionChanged.begin"), begun);
    flushLater();
}

void DocumentWatch::noteChange(const DocumentEvent &event)
{
    if (m_changes.isEmpty() && !m_changesBudget.take())
        return;
    if (m_changes.size() < mostChanges) {
        QVariantMap change{{QStringLiteral("type"), nameOf(event.kind)}};
        if (event.layer)
            change.insert(QStringLiteral("layer"), QVariant::fromValue(ScriptObjectPointer(event.layer)));
        // One layer's values change in many small steps.
        if (m_changes.isEmpty() || m_changes.last() != QVariant(change))
            m_changes.append(change);
    }
    flushLater();
}

void DocumentWatch::flushLater()
{
    if (m_isFlushPlanned || m_holds > 0)
        return;
    m_isFlushPlanned = true;
    LTAppEnvironment::current().mainQueue().async([this, life = std::weak_ptr(m_life)] {
        if (!life.expired())
            flush();
    });
}

void DocumentWatch::flush()
{
    m_isFlushPlanned = false;
    if (m_holds > 0)
        return;
    if (const auto old = std::exchange(m_oldSelection, std::nullopt)) {
        auto finished = context();
        finished.insert(QStringLiteral("oldSelection"), scriptList(*old));
        m_actions.tell(QStringLiteral("SelectionChanged.finish"), finished);
    }
    if (const auto changes = std::exchange(m_changes, {}); !changes.isEmpty()) {
        auto changed = context();
        changed.insert(QStringLiteral("changes"), changes);
        m_actions.tell(QStringLiteral("DocumentChanged"), changed);
        m_actions.tell(KRPluginCommandDocumentChangedHandlerKey, changed);
    }
}

void DocumentWatch::release()
{
    if (--m_holds == 0)
        flushLater();
}
