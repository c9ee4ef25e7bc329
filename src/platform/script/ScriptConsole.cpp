#include "platform/script/ScriptConsole.h"

namespace {

constexpr char consoleName[] = "console";

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

/// The library's console, which is the global from now on. Null when there is none to be had.
JSObjectRef realConsole(JSContextRef context, JSValueRef *exception)
{
    auto *const scriptContext = ScriptContext::find(context);
    auto *const library = scriptContext ? scriptContext->library(exception) : nullptr;
    const auto console = library ? scriptContext->property(library, consoleName, exception) : nullptr;
    if (!console)
        return nullptr;
    scriptContext->setProperty(scriptContext->global(), consoleName, console);
    return objectOf(console);
}

JSValueRef propertyOfConsole(JSContextRef context, JSObjectRef, JSStringRef name, JSValueRef *exception)
{
    auto *const console = realConsole(context, exception);
    if (!console || !JSObjectHasProperty(context, console, name))
        return nullptr;
    return JSObjectGetProperty(context, console, name, exception);
}

bool setPropertyOfConsole(JSContextRef context, JSObjectRef, JSStringRef name, JSValueRef value, JSValueRef *exception)
{
    auto *const console = realConsole(context, exception);
    if (console)
        JSObjectSetProperty(context, console, name, value, kJSPropertyAttributeNone, exception);
    return console;
}

void namesOfConsole(JSContextRef context, JSObjectRef, JSPropertyNameAccumulatorRef names)
{
    auto *const console = realConsole(context, nullptr);
    if (!console)
        return;
    const auto properties = JSObjectCopyPropertyNames(context, console);
    for (std::size_t i = 0; i < JSPropertyNameArrayGetCount(properties); ++i)
        JSPropertyNameAccumulatorAddName(names, JSPropertyNameArrayGetNameAtIndex(properties, i));
    JSPropertyNameArrayRelease(properties);
}

JSClassRef consoleClass()
{
    static const JSClassRef created = [] {
        auto definition = kJSClassDefinitionEmpty;
        definition.className = consoleName;
        definition.attributes = kJSClassAttributeNoAutomaticPrototype;
        definition.getProperty = propertyOfConsole;
        definition.setProperty = setPropertyOfConsole;
        definition.getPropertyNames = namesOfConsole;
        return JSClassCreate(&definition);
    }();
    return created;
}

} // namespace

void installConsole(ScriptContext &context)
{
    context.setProperty(context.global(), consoleName, JSObjectMake(context.ref(), consoleClass(), nullptr));
}
