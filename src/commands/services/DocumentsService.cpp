#include "commands/services/DocumentsService.h"

#include "platform/LTAppEnvironment.h"
#include "platform/OpenDocuments.h"
#include "platform/script/ScriptClass.h"

#include <utility>

ScriptObjectPointer DocumentsService::documentOfContext() const
{
    const auto command = m_context.command.lock();
    const auto context = command ? command->context() : nullptr;
    return context ? context->value(QStringLiteral("document")).value<ScriptObjectPointer>() : nullptr;
}

QVariantList DocumentsService::documents() const
{
    QList<ScriptObjectPointer> documents;
    if (const auto *const open = LTAppEnvironment::current().openDocuments())
        documents = open->documents();
    const auto own = documentOfContext();
    if (own && !documents.contains(own))
        documents.append(own);
    QVariantList list;
    for (const auto &document : std::as_const(documents))
        list.append(QVariant::fromValue(document));
    return list;
}

ScriptObjectPointer DocumentsService::activeDocument() const
{
    if (auto own = documentOfContext())
        return own;
    const auto *const open = LTAppEnvironment::current().openDocuments();
    return open ? open->activeDocument() : nullptr;
}

QVariantMap DocumentsService::layerValues(const ScriptObjectPointer &root, const QVariantList &keys)
{
    m_latestRows.emplace(root);
    return m_latestRows->values(QVariant(keys).toStringList());
}

QVariantList DocumentsService::layersAt(const QVariantList &rows)
{
    const auto latest = std::exchange(m_latestRows, std::nullopt);
    return latest ? latest->layersAt(rows) : QVariantList();
}

QVariantList DocumentsService::layersIn(const ScriptObjectPointer &root) const
{
    return LayerRows(root).layers();
}

const ScriptClass &DocumentsService::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&DocumentsService::documents>("documents", "(): Document[]"),
        scriptOperation<&DocumentsService::activeDocument>("activeDocument", "(): Document | null"),
        scriptOperation<&DocumentsService::layerValues>(
            "layerValues", "(root: Layer | Document, keys: string[]): Record<string, unknown>"),
        scriptOperation<&DocumentsService::layersAt>("layersAt", "(rows: number[]): Layer[]"),
        scriptOperation<&DocumentsService::layersIn>("layersIn", "(root: Layer | Document): Layer[]"),
    };
    static constexpr ScriptClass scriptClass{"DocumentsService", operations};
    return scriptClass;
}
