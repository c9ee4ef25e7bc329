// Any text as a script: every line keeps its number, and what the engine can parse is never changed.

#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptPreprocessor.h"
#include "platform/script/ScriptString.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto source = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto rewritten = withMessageSendsRewritten(source);
    if (rewritten.count(u'\n') != source.count(u'\n'))
        qFatal("lines were added or lost");
    if (rewritten == source)
        return 0;
    const auto context = ScriptEngine::instance().context();
    if (JSCheckScriptSyntax(context, ScriptString(QStringView(source)).get(), nullptr, 1, nullptr))
        qFatal("a valid script was changed");
    return 0;
}
