// What the globals of a session ask of it.

#include "platform/script/ScriptSession.h"

#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/script/ValueText.h"

namespace {

// On one line, so that the module's lines keep their numbers. A first line "#!…" becomes a comment.
const auto moduleHead = QStringLiteral("(function (exports, require, module, __filename, __dirname) {");
const auto moduleTail = QStringLiteral("\n})");

} // namespace

JSValueRef ScriptSession::callHost(HostFunction function, std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    if (!m_live) {
        throw ScriptException(QStringLiteral("The script's session has ended."));
    }
    const auto context = m_live->context.ref();
    const auto number = [&](std::size_t index) { return JSValueToNumber(context, arguments[index], nullptr); };
    const auto boolean = [&](std::size_t index) { return JSValueToBoolean(context, arguments[index]); };
    const auto text = [&](std::size_t index) { return m_live->context.textOf(arguments[index]); };

    switch (function) {
    case HostFunction::Print:
        return printValue(arguments[0], exception);
    case HostFunction::PrintError:
        return printError(arguments[0], exception);
    case HostFunction::Describe:
        return m_live->context.makeString(m_live->converter.description(arguments[0]));
    case HostFunction::Now:
        return JSValueMakeNumber(context, double(LTAppEnvironment::current().mainQueue().now().count()));
    case HostFunction::Stack:
        return stackText(arguments[0]);
    case HostFunction::StartTimer:
        m_live->timers.start(int(number(0)), number(1), boolean(2));
        return nullptr;
    case HostFunction::StopTimer:
        m_live->timers.stop(int(number(0)));
        return nullptr;
    case HostFunction::ResolveModule:
        return resolveModule(arguments[0], arguments[1], exception);
    case HostFunction::CompileModule:
        return compileModule(text(0), exception);
    case HostFunction::ReadModule:
        return readModule(text(0));
    case HostFunction::Library:
        return m_live->context.library(exception);
    case HostFunction::PushedObject:
        return m_live->converter.toScript(m_pushedObjects.value(text(0)), exception);
    case HostFunction::MakeOperation:
        return m_live->wrappers.makeOperation(arguments);
    case HostFunction::HostService:
        return hostService(arguments[0], arguments[1], exception);
    case HostFunction::GlobalValue:
        return globalValue(text(0), exception);
    case HostFunction::Settled:
        promiseSettled(int(number(0)), boolean(1), arguments[2]);
        return nullptr;
    }
    return nullptr;
}

JSValueRef ScriptSession::printValue(JSValueRef value, JSValueRef *exception)
{
    const auto printed = m_live->converter.toVariant(value, exception);
    if (!*exception)
        print(printed);
    return nullptr;
}

JSValueRef ScriptSession::printError(JSValueRef value, JSValueRef *exception)
{
    const auto printed = m_live->converter.toVariant(value, exception);
    if (*exception)
        return nullptr;
    print(QVariantMap{
        {QStringLiteral("level"), QStringLiteral("error")},
        {QStringLiteral("stringValue"), descriptionOfValue(printed)},
        {QStringLiteral("payload"), QVariantList{printed}},
    });
    return nullptr;
}

JSValueRef ScriptSession::stackText(JSValueRef stack)
{
    QString lines;
    const auto frames = locations().frames(m_live->context.textOf(stack));
    for (const auto &frame : frames)
        lines += QStringLiteral("\n    at ") + frame.text();
    return m_live->context.makeString(lines);
}

JSValueRef ScriptSession::resolveModule(JSValueRef name, JSValueRef requirer, JSValueRef *exception)
{
    auto &context = m_live->context;
    if (!JSValueIsString(context.ref(), name)) {
        *exception = context.makeError(QStringLiteral("require needs the name of a module, but was given %1.")
                                           .arg(m_live->converter.description(name)));
        return nullptr;
    }
    m_modules.setMainScript(pathFromFileURL(m_scriptFile), folderOfModules());
    const auto file = m_modules.resolve(context.textOf(name), context.textOf(requirer));
    if (file)
        return context.makeString(file.value());
    *exception = moduleNotFound(file.error().localizedDescription);
    return nullptr;
}

JSValueRef ScriptSession::compileModule(const QString &file, JSValueRef *exception)
{
    auto text = m_modules.text(file);
    if (!text)
        throw ScriptException(text.error().localizedDescription);
    auto source = text.value();
    if (source.startsWith(u"#!"))
        source.replace(0, 2, QStringLiteral("//"));
    const auto url = absoluteString(m_modules.url(file));
    m_locations.addFolder(m_modules.folder(file));
    noteSource(url, {int(moduleHead.size()), {}, std::nullopt, m_modules.folder(file), false});
    return evaluate(*m_live, {source, url, moduleHead, moduleTail, moduleTail.size()}, exception);
}

JSValueRef ScriptSession::readModule(const QString &file)
{
    const auto text = m_modules.text(file);
    if (!text)
        throw ScriptException(text.error().localizedDescription);
    return m_live->context.makeString(text.value());
}

JSValueRef ScriptSession::hostService(JSValueRef name, JSValueRef requirer, JSValueRef *exception)
{
    auto &context = m_live->context;
    const auto fullName = context.textOf(name);
    JSValueRef service = nullptr;
    QString message;
    if (m_modules.isCoreModule(context.textOf(requirer))) {
        const auto convert = [this](const QVariant &value, JSValueRef *error) {
            return m_live->converter.toScript(value, error);
        };
        service = m_services.service(fullName.mid(5), shared_from_this(), context.ref(), convert, exception);
        message = QStringLiteral("Cannot find module '%1': the application has no service of that name.");
    } else {
        message =
            QStringLiteral("Cannot find module '%1'. Services of the application are for its own modules; require "
                           "the module that offers what you need.");
    }
    if (service || *exception)
        return service;
    *exception = moduleNotFound(message.arg(fullName));
    return nullptr;
}

JSValueRef ScriptSession::moduleNotFound(const QString &message)
{
    auto &context = m_live->context;
    const auto error = context.makeError(message);
    context.setProperty(const_cast<JSObjectRef>(error), "code", context.makeString(u"MODULE_NOT_FOUND"));
    return error;
}

void ScriptSession::addGlobals(Live &live, const QString &text)
{
    const auto hosting = m_services.hosting();
    if (!hosting)
        return;
    const auto added = scriptGlobalsIn(text) & ~m_knownGlobals;
    if (added.none())
        return;
    m_knownGlobals |= added;
    const auto names = scriptGlobalNames();
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isAdded = added.test(i) && !m_pushedObjects.contains(names[i].toString());
        if (isAdded && !hosting->scriptGlobal(names[i].toString()).file.isEmpty())
            live.context.addGlobal(names[i]);
    }
}

JSValueRef ScriptSession::globalValue(const QString &name, JSValueRef *exception)
{
    const auto hosting = m_services.hosting();
    const auto global = hosting ? hosting->scriptGlobal(name) : ScriptGlobal();
    if (global.file.isEmpty())
        return nullptr;
    auto &context = m_live->context;
    const auto file = context.makeString(m_modules.addCoreModule(global.file));
    const auto exports = context.callLibrary(libraryfunction::requireFile, file, exception);
    if (global.property.isEmpty() || *exception || !exports || !JSValueIsObject(context.ref(), exports))
        return exports;
    return context.property(const_cast<JSObjectRef>(exports), global.property.toUtf8().constData(), exception);
}
