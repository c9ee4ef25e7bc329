#pragma once

#include "platform/Export.h"
#include "platform/script/ScriptObject.h"

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <cmath>
#include <concepts>
#include <limits>
#include <optional>

/// One call from a script into a C++ operation: its arguments, and the place for its result.
///
/// Arguments convert as the script's language would: a missing one is undefined, everything has a truth, a number and
/// a text. Where an object is needed and something else is given, a ScriptException says so.
class KORVAN_EXPORT ScriptCall
{
public:
    virtual bool boolArgument(std::size_t index) const = 0;
    virtual double numberArgument(std::size_t index) const = 0;
    /// Undefined and null are nil.
    virtual std::optional<QString> stringArgument(std::size_t index) const = 0;
    /// Undefined and null are nil (invalid).
    virtual QVariant variantArgument(std::size_t index) const = 0;

    virtual void setResult(bool value) = 0;
    virtual void setResult(double value) = 0;
    virtual void setResult(const QString &value) = 0;
    /// Nil (invalid) is undefined for the script.
    virtual void setResult(const QVariant &value) = 0;

    /// The number without its fraction; what the range does not hold becomes the nearest number that it holds.
    template <std::integral Integer>
    Integer integerArgument(std::size_t index) const
    {
        const double number = numberArgument(index);
        constexpr auto lowest = std::numeric_limits<Integer>::min();
        constexpr auto highest = std::numeric_limits<Integer>::max();
        if (std::isnan(number))
            return 0;
        if (number <= static_cast<double>(lowest))
            return lowest;
        return number >= static_cast<double>(highest) ? highest : static_cast<Integer>(number);
    }
    /// Undefined and null are nil; anything but an object or a dictionary is an error.
    QVariantMap dictionaryArgument(std::size_t index) const;
    /// Undefined and null are nil; anything but an array is an error.
    QVariantList listArgument(std::size_t index) const;
    /// Undefined and null are nil; anything but a C++ object that still exists is an error.
    ScriptObjectPointer objectArgument(std::size_t index) const;

    /// The error for an argument that is not what the operation takes.
    [[noreturn]] void rejectArgument(std::size_t index, const QString &expected) const;

protected:
    explicit ScriptCall(const char *operation)
        : m_operation(operation)
    { }
    ~ScriptCall() = default;

private:
    const char *m_operation;
};
