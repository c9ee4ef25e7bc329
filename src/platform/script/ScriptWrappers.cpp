#include "platform/script/ScriptWrappers.h"

#include <QByteArray>

ScriptOperationHandler::~ScriptOperationHandler() = default;

/// The way from a box, which the collector owns, back to the session; cut at the session's end.
struct ScriptWrappers::Link
{
    ScriptOperationHandler *handler;
};

/// What a wrapper keeps in its private field. Owned by the collector.
struct ScriptWrappers::Box
{
    std::weak_ptr<ScriptObject> object;
    const char *className;
    std::shared_ptr<Link> link;
};

struct ScriptWrappers::ClassRecord
{
    const ScriptClass *scriptClass;
    ProtectedValue prototype;
    ProtectedValue make;
    ProtectedValue boxOf;
};

namespace {

/// The script class for a table: a method for each operation, which hands the private box, the operation's token (made
/// when the method is first called) and the arguments to one native function. That is as fast as a bare native
/// function, where the engine's own classes for native objects take twice the time.
QByteArray classSource(const ScriptClass &scriptClass)
{
    const QByteArray name(scriptClass.name);
    QByteArray tokens;
    QByteArray methods;
    int index = 0;
    for (const auto &operation : scriptClass.operations) {
        QByteArray parameters;
        for (int i = 0; i < operation.argumentCount; ++i)
            parameters += (i > 0 ? ",a" : "a") + QByteArray::number(i);
        const QByteArray token = "t" + QByteArray::number(index);
        tokens += ',' + token;
        methods += QByteArray(operation.name) + '(' + parameters + "){return call(this.#box," + token + "||(" + token
            + "=host(" + QByteArray::number(int(HostFunction::MakeOperation)) + ",id," + QByteArray::number(index)
            + "))" + (parameters.isEmpty() ? "" : ",") + parameters + ")}\n";
        ++index;
    }
    return "(function(host,call,id){'use strict';let next" + tokens + ";class " + name
        + "{#box;constructor(){if(next===undefined)throw new TypeError('A script cannot make a " + name
        + ".');this.#box=next;next=undefined}\nstatic boxOf(o){return #box in o?o.#box:undefined}\n" + methods
        + "get[Symbol.toStringTag](){return'" + name + "'}}\nconst boxOf=" + name + ".boxOf;delete " + name
        + ".boxOf;return{make(box){next=box;return new " + name + "},boxOf,prototype:" + name + ".prototype}})";
}

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

/// A class of the engine for values that only the prelude's classes hold, never a script.
JSClassRef makePrivateClass(const char *name, JSObjectFinalizeCallback finalize)
{
    auto definition = kJSClassDefinitionEmpty;
    definition.className = name;
    definition.attributes = kJSClassAttributeNoAutomaticPrototype;
    definition.finalize = finalize;
    return JSClassCreate(&definition);
}

} // namespace

ScriptWrappers::ScriptWrappers(ScriptContext &context, ScriptOperationHandler &handler)
    : m_context(context)
    , m_link(std::make_shared<Link>(Link{&handler}))
{ }

ScriptWrappers::~ScriptWrappers()
{
    m_link->handler = nullptr;
    for (auto &[object, known] : m_known)
        release(known);
}

JSObjectRef ScriptWrappers::operationFunction()
{
    if (!m_operationFunction.get()) {
        m_operationFunction = ProtectedValue(m_context.ref(),
            JSObjectMakeFunctionWithCallback(m_context.ref(), nullptr, &ScriptWrappers::operationCallback));
    }
    return m_operationFunction.object();
}

JSValueRef ScriptWrappers::wrap(const ScriptObjectPointer &object, JSValueRef *exception)
{
    if (const auto wrapper = knownWrapper(object))
        return wrapper;
    const auto &scriptClass = object->scriptClass();
    const auto *const classRecord = record(scriptClass, exception);
    if (!classRecord)
        return nullptr;
    static const JSClassRef boxClass =
        makePrivateClass("Box", [](JSObjectRef box) { delete static_cast<Box *>(JSObjectGetPrivate(box)); });
    const JSValueRef argument = JSObjectMake(m_context.ref(), boxClass, new Box{object, scriptClass.name, m_link});
    const auto wrapper = m_context.call(classRecord->make.object(), {&argument, 1}, exception);
    if (wrapper)
        remember(object, objectOf(wrapper));
    return wrapper;
}

JSValueRef ScriptWrappers::knownWrapper(const ScriptObjectPointer &object) const
{
    const auto found = m_known.find(object.get());
    if (found == m_known.end() || found->second.object.lock() != object)
        return nullptr;
    const auto &known = found->second;
    return known.weakWrapper ? JavaScriptCorePrivate::entryPoints().weakGetObject(known.weakWrapper)
                             : known.strongWrapper.get();
}

void ScriptWrappers::remember(const ScriptObjectPointer &object, JSObjectRef wrapper)
{
    forgetCollected();
    const auto &engine = JavaScriptCorePrivate::entryPoints();
    auto &known = m_known[object.get()];
    release(known);
    known.object = object;
    if (engine.weakCreate && engine.weakGetObject && engine.weakRelease)
        known.weakWrapper = engine.weakCreate(ScriptEngine::instance().group(), wrapper);
    else // without these entry points every wrapper lives until the session's end
        known.strongWrapper = ProtectedValue(m_context.ref(), wrapper);
}

void ScriptWrappers::forgetCollected()
{
    if (m_known.size() < m_knownBeforeNextSweep)
        return;
    const auto weakGetObject = JavaScriptCorePrivate::entryPoints().weakGetObject;
    for (auto entry = m_known.begin(); entry != m_known.end();) {
        auto &known = entry->second;
        const bool isCollected = known.weakWrapper && !weakGetObject(known.weakWrapper);
        if (isCollected)
            release(known);
        entry = isCollected ? m_known.erase(entry) : std::next(entry);
    }
    m_knownBeforeNextSweep = std::max<std::size_t>(64, m_known.size() * 2);
}

void ScriptWrappers::release(Known &known)
{
    if (known.weakWrapper) {
        JavaScriptCorePrivate::entryPoints().weakRelease(
            ScriptEngine::instance().group(), std::exchange(known.weakWrapper, nullptr));
    }
    known.strongWrapper.reset();
}

const ScriptWrappers::ClassRecord *ScriptWrappers::record(const ScriptClass &scriptClass, JSValueRef *exception)
{
    if (const auto found = m_classes.find(&scriptClass); found != m_classes.end())
        return &found->second;

    // The texts are constant, so the engine compiles each class once per process.
    static std::unordered_map<const ScriptClass *, ScriptString> sources;
    static const ScriptString sourceURL("korvan-prelude:classes");
    auto source = sources.find(&scriptClass);
    if (source == sources.end())
        source = sources.emplace(&scriptClass, ScriptString(classSource(scriptClass).constData())).first;

    const auto context = m_context.ref();
    const auto factory = m_context.evaluate(source->second, sourceURL, exception);
    if (!factory)
        return nullptr;
    const auto id = JSValueMakeNumber(context, double(reinterpret_cast<quintptr>(&scriptClass)));
    const JSValueRef arguments[] = {m_context.hostFunction(), operationFunction(), id};
    const auto parts = m_context.call(objectOf(factory), arguments, exception);
    if (!parts)
        return nullptr;
    const auto part = [&](const char *name) {
        return ProtectedValue(context, m_context.property(objectOf(parts), name, nullptr));
    };
    const auto added =
        m_classes.emplace(&scriptClass, ClassRecord{&scriptClass, part("prototype"), part("make"), part("boxOf")});
    const auto *const result = &added.first->second;
    m_recordsByPrototype.emplace(result->prototype.get(), result);
    return result;
}

JSValueRef ScriptWrappers::makeOperation(std::span<const JSValueRef> arguments) const
{
    const auto context = m_context.ref();
    const auto id = quintptr(JSValueToNumber(context, arguments[0], nullptr));
    const auto index = std::size_t(JSValueToNumber(context, arguments[1], nullptr));
    const auto &scriptClass = *m_classes.at(reinterpret_cast<const ScriptClass *>(id)).scriptClass;
    static const JSClassRef operationClass = makePrivateClass("Operation", nullptr);
    return JSObjectMake(context, operationClass, const_cast<ScriptOperation *>(&scriptClass.operations[index]));
}

bool ScriptWrappers::isWrapper(JSValueRef prototype) const
{
    return m_recordsByPrototype.contains(prototype);
}

ScriptObjectPointer ScriptWrappers::unwrap(JSObjectRef wrapper, JSValueRef prototype) const
{
    const auto *const classRecord = m_recordsByPrototype.at(prototype);
    const JSValueRef argument = wrapper;
    const auto value = m_context.call(classRecord->boxOf.object(), {&argument, 1}, nullptr);
    if (!value || !JSValueIsObject(m_context.ref(), value))
        return nullptr;
    return static_cast<Box *>(JSObjectGetPrivate(objectOf(value)))->object.lock();
}

JSValueRef ScriptWrappers::operationCallback(
    JSContextRef context, JSObjectRef, JSObjectRef, size_t count, const JSValueRef arguments[], JSValueRef *exception)
{
    // Both come from the private fields and variables of a class made here: they are what they have to be.
    const auto *const receiver = static_cast<Box *>(JSObjectGetPrivate(objectOf(arguments[0])));
    const auto *const operation = static_cast<ScriptOperation *>(JSObjectGetPrivate(objectOf(arguments[1])));
    auto *const handler = receiver->link->handler;
    if (!handler) {
        *exception = ScriptContext::endedError(context);
        return JSValueMakeUndefined(context);
    }
    const auto object = receiver->object.lock();
    if (!object) {
        const auto message = QStringLiteral("This %1 no longer exists.").arg(QLatin1String(receiver->className));
        const JSValueRef text = JSValueMakeString(context, ScriptString(message).get());
        *exception = JSObjectMakeError(context, 1, &text, nullptr);
        return JSValueMakeUndefined(context);
    }
    const auto result = handler->invoke(*object, *operation, {arguments + 2, count - 2}, exception);
    return result ? result : JSValueMakeUndefined(context);
}
