// Any text as a script: what a valid one defines at its end is found, whatever stands before it.

#include "platform/script/JavaScriptCorePrivate.h"
#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptOutline.h"
#include "platform/script/ScriptString.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

namespace {

bool isScript(const QString &source)
{
    static const auto context = [] {
        const auto made = ScriptEngine::instance().context();
        JavaScriptCorePrivate::entryPoints().setIncludesNativeCallStack(made, false); // far more texts in a second
        return made;
    }();
    return JSCheckScriptSyntax(context, ScriptString(source).get(), nullptr, 1, nullptr);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto source = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto handler = QStringLiteral("onKorvanRun");
    const ScriptOutline alone(source);
    if (!source.contains(handler) && alone.definitionOf(handler) == ScriptOutline::Definition::Defined)
        qFatal("a name from nowhere");
    const QString extended = source + QStringLiteral("\n;function onKorvanRun() {}");
    if (!isScript(source) || !isScript(extended))
        return 0;
    const auto definition = ScriptOutline(extended).definitionOf(handler);
    if (definition == ScriptOutline::Definition::Missing)
        qFatal("the function at the end is not found");
    return 0;
}
