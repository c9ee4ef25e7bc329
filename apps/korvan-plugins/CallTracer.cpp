#include "CallTracer.h"

namespace {

QString textOf(const ScriptCallRecord &call)
{
    const auto arguments = call.arguments.join(QStringLiteral(", "));
    switch (call.kind) {
    case ScriptCallRecord::Kind::Get:
        return call.name;
    case ScriptCallRecord::Kind::Set:
        return call.name + QStringLiteral(" = ") + arguments;
    case ScriptCallRecord::Kind::Call:
        break;
    }
    return call.name + u'(' + arguments + u')';
}

} // namespace

void CallTracer::called(const ScriptCallRecord &call)
{
    const auto milliseconds = double(call.duration.count()) / 1e6;
    auto text = QStringLiteral("%1 ms  ").arg(milliseconds, 8, 'f', 3) + QString(call.depth * 2, u' ') + textOf(call);
    if (call.hasFailed)
        text += QStringLiteral(" failed");
    else if (!call.result.isEmpty())
        text += QStringLiteral(" → ") + call.result;
    if (m_output.isJSON()) {
        m_log.add(
            {{QStringLiteral("level"), QStringLiteral("trace")}, {QStringLiteral("stringValue"), text.trimmed()}});
        return;
    }
    printToStandardError(text);
}
