#pragma once

#include "platform/Export.h"

#include <QString>
#include <QStringList>

#include <chrono>

/// One call from a script into C++: of an object's operation, of a function, or for an entry of a dictionary.
struct ScriptCallRecord
{
    enum class Kind {
        Call,
        /// Of a dictionary's entry.
        Get,
        Set
    };

    Kind kind = Kind::Call;
    /// The class and the operation, such as "Layer.setName"; the dictionary's key as "Dictionary.document".
    QString name;
    /// As text for people: short values as they are, others by their kind.
    QStringList arguments;
    /// The same; "" for undefined.
    QString result;
    bool hasFailed = false;
    /// Inside of how many other calls it was made.
    int depth = 0;
    std::chrono::nanoseconds duration{0};
};

/// Whoever wants to know of the calls of all sessions, each when it has ended. Main thread only. Calls cost nothing
/// more when there is nobody.
class KORVAN_EXPORT ScriptCallObserver
{
public:
    /// Hears of calls from now on, in the place of another one, until it is destroyed.
    ScriptCallObserver();
    virtual ~ScriptCallObserver();
    ScriptCallObserver(const ScriptCallObserver &) = delete;
    ScriptCallObserver &operator=(const ScriptCallObserver &) = delete;

    virtual void called(const ScriptCallRecord &call) = 0;

    /// Null for nobody.
    static ScriptCallObserver *current();
};
