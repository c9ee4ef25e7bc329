#pragma once

#include "platform/KRError.h"

#include <utility>
#include <variant>

/// The value of an operation that may fail, or why it failed. It cannot be dropped silently.
template <class Value>
class [[nodiscard]] Result
{
public:
    Result(Value value)
        : m_content(std::in_place_index<0>, std::move(value))
    { }
    Result(KRError error)
        : m_content(std::in_place_index<1>, std::move(error))
    { }

    [[nodiscard]] bool isOk() const { return m_content.index() == 0; }
    explicit operator bool() const { return isOk(); }

    /// Only after isOk() answered true.
    [[nodiscard]] const Value &value() const & { return std::get<0>(m_content); }
    [[nodiscard]] Value &&value() && { return std::get<0>(std::move(m_content)); }
    /// Only after isOk() answered false.
    [[nodiscard]] const KRError &error() const { return std::get<1>(m_content); }

private:
    std::variant<Value, KRError> m_content;
};
