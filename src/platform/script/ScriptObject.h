#pragma once

#include "platform/Export.h"

#include <QMetaType>

#include <memory>

struct ScriptClass;

/// A C++ object that scripts can see. Held by shared pointers; a script's view of it is weak: once the object is gone,
/// using it raises an error in the script.
///
/// Inside one session the same object is always the same script value.
class KORVAN_EXPORT ScriptObject : public std::enable_shared_from_this<ScriptObject>
{
public:
    virtual ~ScriptObject();

    /// What scripts may call on it; lives as long as the program.
    virtual const ScriptClass &scriptClass() const = 0;

protected:
    ScriptObject() = default;
    ScriptObject(const ScriptObject &) = delete;
    ScriptObject &operator=(const ScriptObject &) = delete;
};

/// How an object travels in a QVariant: in this form, or weakly as std::weak_ptr<ScriptObject>.
using ScriptObjectPointer = std::shared_ptr<ScriptObject>;
using WeakScriptObjectPointer = std::weak_ptr<ScriptObject>;

Q_DECLARE_METATYPE(ScriptObjectPointer)
Q_DECLARE_METATYPE(WeakScriptObjectPointer)
