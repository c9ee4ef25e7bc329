#pragma once

#include <QStringList>
#include <QUrl>

#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>

/// What an operation's entry in its table says of its parameters and its result, in the words of TypeScript:
/// "(name, frame: Partial<Frame>): Layer[]". It has a name for each parameter, and a type for exactly those values that
/// C++ leaves open; the others have theirs from the C++ function.
struct ScriptSignature
{
    std::string_view text;

    constexpr bool isComplete() const { return text.starts_with('(') && end() < text.size(); }

    constexpr std::size_t parameterCount() const
    {
        std::size_t count = 0;
        while (!parameter(count).empty())
            ++count;
        return count;
    }

    /// "name" or "name: Type"; empty when there is none of that index.
    constexpr std::string_view parameter(std::size_t index) const
    {
        std::size_t start = 1;
        for (std::size_t i = 0; i < index && start < end(); ++i)
            start = endOfParameter(start) + 1;
        return start < end() ? trimmed(text.substr(start, endOfParameter(start) - start)) : std::string_view();
    }

    /// Of a parameter as above; empty when it says none.
    static constexpr std::string_view typeOf(std::string_view parameter)
    {
        const auto colon = parameter.find(':');
        return colon == std::string_view::npos ? std::string_view() : trimmed(parameter.substr(colon + 1));
    }
    static constexpr std::string_view nameOf(std::string_view parameter)
    {
        return trimmed(parameter.substr(0, parameter.find(':')));
    }

    /// Empty when it says none.
    constexpr std::string_view result() const { return typeOf(text.substr(end())); }

private:
    static constexpr std::string_view trimmed(std::string_view part)
    {
        while (part.starts_with(' '))
            part.remove_prefix(1);
        while (part.ends_with(' '))
            part.remove_suffix(1);
        return part;
    }

    /// Where the parenthesis closes that opens the text.
    constexpr std::size_t end() const
    {
        std::size_t position = 1;
        while (position < text.size() && text[position] != ')')
            position = endOfParameter(position) + (text[endOfParameter(position)] == ',' ? 1 : 0);
        return position;
    }

    /// The comma or the parenthesis behind the parameter that begins there.
    constexpr std::size_t endOfParameter(std::size_t start) const
    {
        int depth = 0;
        for (std::size_t i = start; i < text.size(); ++i) {
            const char c = text[i];
            const bool isArrow = c == '>' && text[i - 1] == '=';
            if (depth == 0 && (c == ',' || c == ')'))
                return i;
            if (c == '(' || c == '<' || c == '{' || c == '[')
                ++depth;
            else if ((c == ')' || c == '>' || c == '}' || c == ']') && !isArrow)
                --depth;
        }
        throw "a signature whose parentheses do not close";
    }
};

namespace scriptbinding {

/// The type that a C++ type alone says; empty when it leaves it open.
template <class Value>
constexpr std::string_view exactType = [] {
    if constexpr (std::is_void_v<Value>)
        return std::string_view("void");
    else if constexpr (std::same_as<Value, bool>)
        return std::string_view("boolean");
    else if constexpr (std::is_arithmetic_v<Value> || std::is_enum_v<Value>)
        return std::string_view("number");
    else if constexpr (std::same_as<Value, QString>)
        return std::string_view("string");
    else if constexpr (std::same_as<Value, std::optional<QString>> || std::same_as<Value, QUrl>)
        return std::string_view("string | null");
    else if constexpr (std::same_as<Value, QStringList>)
        return std::string_view("string[]");
    else
        return std::string_view();
}();

/// The types of the arguments, then that of the result.
template <class Result, class... Arguments>
constexpr std::string_view exactTypes[] = {
    exactType<std::remove_cvref_t<Arguments>>..., exactType<std::remove_cvref_t<Result>>};

/// Does not compile unless each value has its type from exactly one of both.
template <std::size_t count>
consteval const char *checkedSignature(const char *text, const std::string_view (&types)[count])
{
    const ScriptSignature signature{text};
    if (!signature.isComplete())
        throw "a signature looks like \"(name, values: Type): Type\"";
    if (signature.parameterCount() != count - 1)
        throw "a signature has a name for each parameter";
    for (std::size_t i = 0; i < count; ++i) {
        const auto type = i < count - 1 ? ScriptSignature::typeOf(signature.parameter(i)) : signature.result();
        if (type.empty() && types[i].empty())
            throw "the signature has to say this type: C++ leaves it open";
        if (!type.empty() && !types[i].empty())
            throw "the signature may not say this type: C++ does";
    }
    return text;
}

} // namespace scriptbinding
