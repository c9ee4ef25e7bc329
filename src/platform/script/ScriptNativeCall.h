#pragma once

#include "platform/script/ScriptClass.h"

#include <cstring>

/// Calls operations without arguments on script objects from C++, as scripts would. One caller is for one operation,
/// which it looks up only when the class is another than that of the object before.
class ScriptNativeCaller
{
public:
    /// The name has to outlive the caller.
    explicit ScriptNativeCaller(const char *operation)
        : m_name(operation)
    { }

    /// What the operation answers; nil (invalid) when the object has none of that name. What it throws comes out.
    QVariant operator()(ScriptObject &receiver)
    {
        if (&receiver.scriptClass() != m_class)
            find(receiver.scriptClass());
        if (!m_operation)
            return {};
        Call call(m_name);
        m_operation->invoke(receiver, call);
        return std::move(call.result);
    }

private:
    class Call final : public ScriptCall
    {
    public:
        explicit Call(const char *operation)
            : ScriptCall(operation)
        { }
        bool boolArgument(std::size_t) const override { return false; }
        double numberArgument(std::size_t) const override { return std::nan(""); }
        std::optional<QString> stringArgument(std::size_t) const override { return std::nullopt; }
        QVariant variantArgument(std::size_t) const override { return {}; }
        void setResult(bool value) override { result = value; }
        void setResult(double value) override { result = value; }
        void setResult(const QString &value) override { result = value; }
        void setResult(const QVariant &value) override { result = value; }

        QVariant result;
    };

    void find(const ScriptClass &scriptClass)
    {
        m_class = &scriptClass;
        m_operation = nullptr;
        for (const auto &operation : scriptClass.operations) {
            if (std::strcmp(operation.name, m_name) == 0)
                m_operation = &operation;
        }
    }

    const char *m_name;
    const ScriptClass *m_class = nullptr;
    const ScriptOperation *m_operation = nullptr;
};
