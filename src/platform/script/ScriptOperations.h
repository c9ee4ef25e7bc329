#pragma once

#include "platform/script/ScriptConverter.h"
#include "platform/script/ScriptWrappers.h"

/// Carries out the operations that scripts call on C++ objects: converts the arguments, calls the member function,
/// converts its result. What it throws becomes an error of the script.
class ScriptOperations final : public ScriptOperationHandler
{
public:
    explicit ScriptOperations(ScriptContext &context)
        : m_context(context)
    { }
    /// The converter is made after the wrappers that need this object; without one (again) every operation is refused.
    void setConverter(ScriptConverter *converter) { m_converter = converter; }

    JSValueRef invoke(ScriptObject &receiver, const ScriptOperation &operation, std::span<const JSValueRef> arguments,
        JSValueRef *exception) override;

private:
    JSValueRef carryOut(ScriptObject &receiver, const ScriptOperation &operation, std::span<const JSValueRef> arguments,
        JSValueRef *exception);

    ScriptContext &m_context;
    ScriptConverter *m_converter = nullptr;
};
