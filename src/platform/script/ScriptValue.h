#pragma once

#include "platform/Export.h"

#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <functional>
#include <memory>

/// What a ScriptValue stands for; the engine's side of it.
class KORVAN_EXPORT ScriptValueStorage
{
public:
    virtual ~ScriptValueStorage();

    virtual bool isAlive() const = 0;
    virtual QString description() const = 0;
    virtual QVariant toVariant() const = 0;
    virtual QVariant call(const QVariantList &arguments) const = 0;
    virtual bool isSettled() const = 0;
    virtual QVariant settledValue() const = 0;
};

/// A value that lives inside a script session and has no equal in C++: a function, a promise, a class instance, a
/// symbol, or an object that scripts keep changing. Cheap to copy; copies are the same value. Main thread only.
///
/// It ends with its session: afterwards isAlive() is false and every question has an empty answer.
class KORVAN_EXPORT ScriptValue
{
public:
    enum class Kind {
        Function,
        Promise,
        /// An object or array whose content can be asked for with toVariant().
        Data,
        /// An object met again inside itself, or nested too deeply to be copied.
        Cycle,
        Other
    };

    ScriptValue() = default;
    ScriptValue(Kind kind, std::shared_ptr<ScriptValueStorage> storage)
        : m_kind(kind)
        , m_storage(std::move(storage))
    { }

    Kind kind() const { return m_kind; }
    bool isAlive() const;

    /// Its text for people, for example "[Function: onRun]".
    QString description() const;
    /// What a Data value holds at the moment, copied.
    QVariant toVariant() const;

    /// Calls a Function. Inside a run an exception comes out as a ScriptException; with no run on the stack it is
    /// reported to the session's print controller, and the result is nil. Nil for anything but a function.
    QVariant call(const QVariantList &arguments) const;

    /// For a Promise: whether it was fulfilled or rejected already. Stays true after the session's end.
    bool isSettled() const;
    /// For a Promise that was fulfilled: with what. Nil before that and for a rejected one.
    QVariant settledValue() const;

    const std::shared_ptr<ScriptValueStorage> &storage() const { return m_storage; }

private:
    Kind m_kind = Kind::Other;
    std::shared_ptr<ScriptValueStorage> m_storage;
};

/// A C++ function handed to scripts as a value. A ScriptException that it throws becomes an error of the script.
struct NativeFunction
{
    std::function<QVariant(const QVariantList &)> function;
};

Q_DECLARE_METATYPE(ScriptValue)
Q_DECLARE_METATYPE(NativeFunction)
