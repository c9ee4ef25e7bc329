#pragma once

#include "platform/script/ScriptDictionary.h"

#include <JavaScriptCore/JavaScript.h>
#include <QVariant>

#include <memory>

/// Turns values into script values and back.
class ScriptValueCoder
{
public:
    virtual ~ScriptValueCoder();

    /// Null with `exception` set when the value has no form that a script can hold.
    virtual JSValueRef toScript(const QVariant &value, JSValueRef *exception) = 0;
    /// The value by reference where scripts could change it, else by copy.
    virtual QVariant toLiveVariant(JSValueRef value, JSValueRef *exception) = 0;
};

/// How scripts see a ScriptDictionary: an object whose properties are the entries, in both directions and at once.
class ScriptDictionaryViews
{
public:
    ScriptDictionaryViews(JSContextRef context, ScriptValueCoder &coder);
    ~ScriptDictionaryViews();

    JSValueRef view(const ScriptDictionaryPointer &dictionary) const;
    bool isView(JSValueRef value) const;
    /// The dictionary behind a view.
    ScriptDictionaryPointer dictionary(JSValueRef view) const;

private:
    struct Link;
    struct Box;

    static JSClassRef viewClass();
    static Box &box(JSObjectRef view);
    static JSValueRef entry(const Box &box, const QString &key, JSValueRef *exception);
    static void setEntry(const Box &box, const QString &key, JSValueRef value, JSValueRef *exception);

    JSContextRef m_context;
    std::shared_ptr<Link> m_link;
};
