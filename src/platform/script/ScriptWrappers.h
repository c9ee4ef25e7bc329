#pragma once

#include "platform/script/JavaScriptCorePrivate.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptObject.h"

#include <span>
#include <unordered_map>

/// Whoever carries out the operations that scripts call on C++ objects.
class ScriptOperationHandler
{
public:
    virtual ~ScriptOperationHandler();

    /// Reports an error by setting `exception`; lets no C++ exception out.
    virtual JSValueRef invoke(ScriptObject &receiver, const ScriptOperation &operation,
        std::span<const JSValueRef> arguments, JSValueRef *exception) = 0;
};

/// The script values that stand for C++ objects in one session: one per object, found again as long as a script holds
/// it. A wrapper is an instance of a script class made from the object's ScriptClass; it keeps its object in a private
/// field, where no script can reach it.
class ScriptWrappers
{
public:
    ScriptWrappers(ScriptContext &context, ScriptOperationHandler &handler);
    ~ScriptWrappers();

    /// The wrapper of an object. Null with `exception` set when it cannot be made.
    JSValueRef wrap(const ScriptObjectPointer &object, JSValueRef *exception);

    /// Whether the value with this prototype is a wrapper.
    bool isWrapper(JSValueRef prototype) const;
    /// The object that a wrapper stands for; null when it is gone.
    ScriptObjectPointer unwrap(JSObjectRef wrapper, JSValueRef prototype) const;

    /// Answers MakeOperation: the token with which a wrapper's method names its operation.
    JSValueRef makeOperation(std::span<const JSValueRef> arguments) const;

private:
    struct ClassRecord;
    struct Link;
    struct Box;

    /// A wrapper as found again by its object's address, which may meanwhile be another object's.
    struct Known
    {
        std::weak_ptr<ScriptObject> object;
        JavaScriptCorePrivate::WeakReference weakWrapper = nullptr;
        ProtectedValue strongWrapper;
    };

    static JSValueRef operationCallback(
        JSContextRef, JSObjectRef, JSObjectRef, size_t, const JSValueRef[], JSValueRef *);

    JSValueRef knownWrapper(const ScriptObjectPointer &object) const;
    void remember(const ScriptObjectPointer &object, JSObjectRef wrapper);
    void forgetCollected();
    void release(Known &known);
    const ClassRecord *record(const ScriptClass &scriptClass, JSValueRef *exception);
    JSObjectRef operationFunction();

    ScriptContext &m_context;
    std::shared_ptr<Link> m_link;
    ProtectedValue m_operationFunction;
    std::unordered_map<const ScriptClass *, ClassRecord> m_classes;
    std::unordered_map<JSValueRef, const ClassRecord *> m_recordsByPrototype;
    std::unordered_map<const ScriptObject *, Known> m_known;
    std::size_t m_knownBeforeNextSweep = 64;
};
