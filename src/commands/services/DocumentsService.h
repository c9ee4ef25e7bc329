#pragma once

#include "commands/services/ServiceContext.h"

#include <QVariantList>

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

    const ScriptClass &scriptClass() const override;

private:
    ScriptObjectPointer documentOfContext() const;

    ServiceContext m_context;
};
