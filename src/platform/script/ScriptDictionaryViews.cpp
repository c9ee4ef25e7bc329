#include "platform/script/ScriptDictionaryViews.h"

#include "platform/script/ObservedCall.h"
#include "platform/script/ScriptString.h"

ScriptValueCoder::~ScriptValueCoder() = default;

/// The way from a view, which the collector owns, back to the session; cut at the session's end.
struct ScriptDictionaryViews::Link
{
    ScriptValueCoder *coder;
};

struct ScriptDictionaryViews::Box
{
    ScriptDictionaryPointer dictionary;
    std::shared_ptr<Link> link;
};

ScriptDictionaryViews::ScriptDictionaryViews(JSContextRef context, ScriptValueCoder &coder)
    : m_context(context)
    , m_link(std::make_shared<Link>(Link{&coder}))
{ }

ScriptDictionaryViews::~ScriptDictionaryViews()
{
    m_link->coder = nullptr;
}

namespace {

QString keyOf(JSStringRef name)
{
    return QString(reinterpret_cast<const QChar *>(JSStringGetCharactersPtr(name)), qsizetype(JSStringGetLength(name)));
}

ScriptCallRecord described(ScriptCallRecord::Kind kind, const QString &key, const QStringList &arguments)
{
    return {kind, QStringLiteral("Dictionary.") + key, arguments, {}, false, 0, {}};
}

} // namespace

ScriptDictionaryViews::Box &ScriptDictionaryViews::box(JSObjectRef view)
{
    return *static_cast<Box *>(JSObjectGetPrivate(view));
}

JSValueRef ScriptDictionaryViews::entry(const Box &box, const QString &key, JSValueRef *exception)
{
    const auto stored = box.dictionary->value(key);
    const auto value = box.link->coder->toScript(stored, exception);
    if (!value)
        return nullptr;
    // What a script has seen once it may change in place: from here on the entry is that very value.
    const bool isCopied = stored.typeId() == QMetaType::QVariantMap || stored.typeId() == QMetaType::QVariantList;
    if (isCopied)
        box.dictionary->setValue(key, box.link->coder->toLiveVariant(value, exception));
    return value;
}

void ScriptDictionaryViews::setEntry(const Box &box, const QString &key, JSValueRef value, JSValueRef *exception)
{
    const auto stored = box.link->coder->toLiveVariant(value, exception);
    if (!*exception)
        box.dictionary->setValue(key, stored);
}

JSClassRef ScriptDictionaryViews::viewClass()
{
    static const JSClassRef created = [] {
        auto definition = kJSClassDefinitionEmpty;
        definition.className = "Object";
        definition.attributes = kJSClassAttributeNoAutomaticPrototype;
        definition.finalize = [](JSObjectRef view) { delete &box(view); };
        definition.hasProperty = [](JSContextRef, JSObjectRef view, JSStringRef name) {
            return box(view).dictionary->contains(keyOf(name));
        };
        definition.getProperty = [](JSContextRef context, JSObjectRef view, JSStringRef name,
                                     JSValueRef *exception) -> JSValueRef {
            const auto key = keyOf(name);
            const auto &held = box(view);
            if (!held.link->coder || !held.dictionary->contains(key))
                return nullptr;
            return observedCall(
                context, exception, [&] { return described(ScriptCallRecord::Kind::Get, key, {}); },
                [&] { return entry(held, key, exception); });
        };
        definition.setProperty = [](JSContextRef context, JSObjectRef view, JSStringRef name, JSValueRef value,
                                     JSValueRef *exception) {
            const auto &held = box(view);
            if (!held.link->coder)
                return true;
            const auto key = keyOf(name);
            observedCall(
                context, exception,
                [&] { return described(ScriptCallRecord::Kind::Set, key, {traceText(context, value)}); },
                [&]() -> JSValueRef {
                    setEntry(held, key, value, exception);
                    return nullptr;
                });
            return true;
        };
        definition.deleteProperty = [](JSContextRef, JSObjectRef view, JSStringRef name, JSValueRef *) {
            const auto key = keyOf(name);
            const bool existed = box(view).dictionary->contains(key);
            box(view).dictionary->remove(key);
            return existed;
        };
        definition.getPropertyNames = [](JSContextRef, JSObjectRef view, JSPropertyNameAccumulatorRef names) {
            const auto keys = box(view).dictionary->keys();
            for (const auto &key : keys)
                JSPropertyNameAccumulatorAddName(names, ScriptString(key).get());
        };
        return JSClassCreate(&definition);
    }();
    return created;
}

JSValueRef ScriptDictionaryViews::view(const ScriptDictionaryPointer &dictionary) const
{
    return JSObjectMake(m_context, viewClass(), new Box{dictionary, m_link});
}

bool ScriptDictionaryViews::isView(JSValueRef value) const
{
    return JSValueIsObjectOfClass(m_context, value, viewClass());
}

ScriptDictionaryPointer ScriptDictionaryViews::dictionary(JSValueRef view) const
{
    return box(const_cast<JSObjectRef>(view)).dictionary;
}
