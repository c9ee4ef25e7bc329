#pragma once

#include "commands/services/LayerRows.h"
#include "commands/services/ServiceContext.h"

#include <QVariantList>
#include <QVariantMap>

#include <optional>

/// "host:documents": which documents there are.
class DocumentsService final : public ScriptObject
{
public:
    explicit DocumentsService(ServiceContext context)
        : m_context(std::move(context))
    { }

    /// The application's open documents, and that of the command's context.
    QVariantList documents() const;
    /// That of the command's context, else the application's; null when there is
    /// none.
    ScriptObjectPointer activeDocument() const;

    /// Of the layers in a document or a group, at once: see LayerRows.
    QVariantMap layerValues(const ScriptObjectPointer &root, const QVariantList &keys);
    /// Of the latest layerValues(), whose rows it forgets.
    QVariantList layersAt(const QVariantList &rows);
    QVariantList layersIn(const ScriptObjectPointer &root) const;

    const ScriptClass &scriptClass() const override;

private:
    ScriptObjectPointer documentOfContext() const;

    ServiceContext m_context;
    std::optional<LayerRows> m_latestRows;
};
