#pragma once

#include "platform/OrderedDictionary.h"
#include "platform/script/ScriptCall.h"
#include "platform/script/ScriptDictionary.h"
#include "platform/script/ScriptSignature.h"

#include <QList>

#include <concepts>
#include <memory>
#include <span>
#include <type_traits>

/// One operation that scripts may call. Its name is the whole selector with "_" for ":" and the last one dropped.
struct ScriptOperation
{
    const char *name;
    int argumentCount;
    void (*invoke)(ScriptObject &receiver, ScriptCall &call);
    /// Parameters and types for the typings of scripts. Where the signature leaves a type out, `exactTypes` has it: one
    /// for each argument, the last one the result's.
    ScriptSignature signature;
    std::span<const std::string_view> exactTypes;
};

/// What scripts see of a C++ class: its name and exactly these operations. One constant table per class, beside the
/// class; the tables are everything that scripts can reach.
struct ScriptClass
{
    const char *name;
    std::span<const ScriptOperation> operations;
};

namespace scriptbinding {

template <class Value>
concept ObjectPointer = std::derived_from<typename Value::element_type, ScriptObject> && std::same_as<Value,
    std::shared_ptr<typename Value::element_type>>;

template <class Value>
Value argument(const ScriptCall &call, std::size_t index)
{
    if constexpr (std::same_as<Value, bool>) {
        return call.boolArgument(index);
    } else if constexpr (std::integral<Value>) {
        return call.integerArgument<Value>(index);
    } else if constexpr (std::floating_point<Value>) {
        return static_cast<Value>(call.numberArgument(index));
    } else if constexpr (std::same_as<Value, QString>) {
        return call.stringArgument(index).value_or(QString());
    } else if constexpr (std::same_as<Value, std::optional<QString>>) {
        return call.stringArgument(index);
    } else if constexpr (std::same_as<Value, QVariant>) {
        return call.variantArgument(index);
    } else if constexpr (std::same_as<Value, QVariantMap>) {
        return call.dictionaryArgument(index);
    } else if constexpr (std::same_as<Value, QVariantList>) {
        return call.listArgument(index);
    } else {
        static_assert(ObjectPointer<Value>, "scripts cannot give an argument of this type");
        const auto object = call.objectArgument(index);
        auto typed = std::dynamic_pointer_cast<typename Value::element_type>(object);
        if (object && !typed)
            call.rejectArgument(index, QStringLiteral("an object of another class"));
        return typed;
    }
}

template <class Value>
void setResult(ScriptCall &call, const Value &value)
{
    if constexpr (std::same_as<Value, bool>)
        call.setResult(value);
    else if constexpr (std::is_arithmetic_v<Value> || std::is_enum_v<Value>)
        call.setResult(static_cast<double>(value));
    else if constexpr (std::same_as<Value, QString>)
        call.setResult(value);
    else if constexpr (std::same_as<Value, std::optional<QString>>)
        call.setResult(value ? QVariant(*value) : QVariant::fromValue(nullptr));
    else if constexpr (std::same_as<Value, QVariant>)
        call.setResult(value);
    else if constexpr (requires { requires ObjectPointer<Value>; })
        call.setResult(QVariant::fromValue(ScriptObjectPointer(value)));
    else
        call.setResult(QVariant::fromValue(value));
}

template <class Member>
struct MemberFunction;

template <class Class, class Result, class... Arguments>
struct MemberFunction<Result (Class::*)(Arguments...)>
{
    static constexpr int argumentCount = sizeof...(Arguments);
    static constexpr auto &types = exactTypes<Result, Arguments...>;

    template <auto member, std::size_t... indexes>
    static void invoke(Class &receiver, ScriptCall &call, std::index_sequence<indexes...>)
    {
        if constexpr (std::is_void_v<Result>)
            (receiver.*member)(argument<std::remove_cvref_t<Arguments>>(call, indexes)...);
        else
            setResult(call, (receiver.*member)(argument<std::remove_cvref_t<Arguments>>(call, indexes)...));
    }

    template <auto member>
    static void invokeOn(ScriptObject &receiver, ScriptCall &call)
    {
        invoke<member>(static_cast<Class &>(receiver), call, std::index_sequence_for<Arguments...>());
    }
};

template <class Class, class Result, class... Arguments>
struct MemberFunction<Result (Class::*)(Arguments...) const> : MemberFunction<Result (Class::*)(Arguments...)>
{ };

/// A function whose first argument is the object: for what has no form of its own in scripts.
template <class Class, class Result, class... Arguments>
struct MemberFunction<Result (*)(Class &, Arguments...)>
{
    static constexpr int argumentCount = sizeof...(Arguments);
    static constexpr auto &types = exactTypes<Result, Arguments...>;

    template <auto function, std::size_t... indexes>
    static void invoke(Class &receiver, ScriptCall &call, std::index_sequence<indexes...>)
    {
        if constexpr (std::is_void_v<Result>)
            function(receiver, argument<std::remove_cvref_t<Arguments>>(call, indexes)...);
        else
            setResult(call, function(receiver, argument<std::remove_cvref_t<Arguments>>(call, indexes)...));
    }

    template <auto function>
    static void invokeOn(ScriptObject &receiver, ScriptCall &call)
    {
        invoke<function>(static_cast<Class &>(receiver), call, std::index_sequence_for<Arguments...>());
    }
};

} // namespace scriptbinding

/// Declares a member function as an operation, or a function whose first argument is the object:
/// `scriptOperation<&Layer::setName>("setName", "(name)")`. The other arguments and the result may be booleans,
/// numbers, texts, nil-able texts, QVariant, dictionaries, lists and shared pointers to script objects; the result also
/// an enumeration, a URL or a list of texts. The signature says what ScriptSignature asks for; without one there are no
/// parameters, and C++ says the result's type.
template <auto member>
consteval ScriptOperation scriptOperation(const char *name, const char *signature = "()")
{
    using Function = scriptbinding::MemberFunction<decltype(member)>;
    return {name, Function::argumentCount, &Function::template invokeOn<member>,
        {scriptbinding::checkedSignature(signature, Function::types)}, Function::types};
}
