#pragma once

#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptDictionaryViews.h"
#include "platform/script/ScriptLiveValue.h"
#include "platform/script/ScriptValue.h"
#include "platform/script/ScriptWrappers.h"

#include <QVariant>

#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// The largest whole number that a script's number holds without loss.
inline constexpr double largestExactInteger = 9007199254740991.0;

/// Whoever calls the functions that scripts have handed to C++.
class ScriptFunctionCaller
{
public:
    virtual ~ScriptFunctionCaller();
    virtual QVariant callFunction(JSObjectRef function, const QVariantList &arguments) = 0;
    /// Runs work that may run scripts: a getter, a toString().
    virtual void runScript(const std::function<void()> &work) = 0;
};

/// Carries values between one session and C++. Main thread only.
///
/// To scripts: nil becomes undefined, nullptr null; booleans, numbers, texts, dates (QDateTime), bytes (QByteArray as
/// Uint8Array), URLs (as text), lists and dictionaries by copy; C++ objects, ScriptDictionary, NativeFunction and
/// ScriptValue by identity. Integers become numbers whatever their size, as those of JSON do: beyond 2^53 the nearest.
///
/// To C++: the same backwards; a whole number becomes qlonglong, any other double; plain objects become QVariantMap;
/// bytes of other typed arrays become a list of their numbers. Everything else becomes a ScriptValue, a BigInt and an
/// array of them too.
class ScriptConverter final : public ScriptValueCoder, public ScriptLiveValueOwner
{
public:
    ScriptConverter(ScriptContext &context, ScriptWrappers &wrappers, ScriptFunctionCaller &caller);
    ~ScriptConverter() override;

    JSValueRef toScript(const QVariant &value, JSValueRef *exception) override;
    QVariant toLiveVariant(JSValueRef value, JSValueRef *exception) override;
    /// A copy. Nil with `exception` set when a property of the value raises one.
    QVariant toVariant(JSValueRef value, JSValueRef *exception);

    std::optional<QString> toOptionalString(JSValueRef value, JSValueRef *exception);
    /// The value's text for people, as it is logged.
    QString description(JSValueRef value);
    bool isPromise(JSValueRef value);
    /// Lets go of everything that C++ holds: the session ends.
    void end();
    /// Notes in the value of a promise how it ended.
    void settle(const ScriptValue &promise, const QVariant &value);

private:
    struct Traversal;

    // ScriptLiveValueOwner
    void forget(ScriptLiveValue *value) override { m_liveValues.erase(value); }
    QString describe(JSValueRef value) override;
    QVariant copy(JSValueRef value) override;
    QVariant callFunction(JSObjectRef function, const QVariantList &arguments) override;

    JSValueRef bytesToScript(const QByteArray &bytes, JSValueRef *exception) const;
    JSValueRef listToScript(const QVariantList &list, JSValueRef *exception);
    void setMember(JSObjectRef object, const QString &key, JSValueRef value, JSValueRef *exception);
    template <class Dictionary>
    JSValueRef dictionaryToScript(const Dictionary &dictionary, JSValueRef *exception);
    JSValueRef customToScript(const QVariant &value, JSValueRef *exception);
    JSValueRef objectToScript(const ScriptObjectPointer &object, JSValueRef *exception);
    JSValueRef functionToScript(const NativeFunction &function);
    JSValueRef carryOutNative(
        const NativeFunction &function, std::span<const JSValueRef> arguments, JSValueRef *exception);
    JSValueRef callNative(const NativeFunction &function, std::span<const JSValueRef> arguments, JSValueRef *exception);
    JSValueRef unsupported(const QVariant &value, JSValueRef *exception) const;

    QVariant convert(JSValueRef value, Traversal &traversal);
    QVariant convertObject(JSObjectRef object, Traversal &traversal);
    QVariant convertArray(JSObjectRef array, Traversal &traversal);
    QVariant convertPlainObject(JSObjectRef object, Traversal &traversal);
    QVariant convertTypedArray(JSObjectRef array, JSTypedArrayType type, Traversal &traversal);
    /// Functions, promises, wrappers and views; nil for anything that is data.
    QVariant identityValue(JSObjectRef object, JSValueRef prototype);
    bool isPlainPrototype(JSValueRef prototype);
    std::optional<unsigned> arrayLength(JSObjectRef array, JSValueRef *exception);

    ScriptValue makeValue(ScriptValue::Kind kind, JSValueRef value);

    ScriptContext &m_context;
    ScriptWrappers &m_wrappers;
    ScriptFunctionCaller &m_caller;
    ScriptDictionaryViews m_views;
    ProtectedValue m_objectPrototype;
    ProtectedValue m_promisePrototype;
    /// For functions that the collector owns: the way back here, as long as there is one.
    std::shared_ptr<ScriptConverter *> m_self;
    std::unordered_set<ScriptLiveValue *> m_liveValues;
};
