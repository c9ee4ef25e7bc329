#include "HostTypings.h"

namespace {

QByteArray bytes(std::string_view text)
{
    return {text.data(), qsizetype(text.size())};
}

/// A signature is checked when it is compiled: of both types one is there.
QByteArray typeFrom(std::string_view written, std::string_view exact)
{
    return bytes(written.empty() ? exact : written);
}

QByteArray methodOf(const ScriptOperation &operation)
{
    const auto &signature = operation.signature;
    const auto count = operation.exactTypes.size() - 1;
    QByteArray parameters;
    for (std::size_t i = 0; i < count; ++i) {
        const auto parameter = signature.parameter(i);
        parameters += (i > 0 ? ", " : "") + bytes(ScriptSignature::nameOf(parameter)) + ": "
            + typeFrom(ScriptSignature::typeOf(parameter), operation.exactTypes[i]);
    }
    return QByteArray(operation.name) + '(' + parameters
        + "): " + typeFrom(signature.result(), operation.exactTypes[count]);
}

} // namespace

QByteArray interfaceOfClass(const ScriptClass &scriptClass, const char *name)
{
    QByteArray text = "    interface " + QByteArray(name) + " {\n";
    for (const auto &operation : scriptClass.operations)
        text += "        " + methodOf(operation) + ";\n";
    return text + "    }\n";
}
