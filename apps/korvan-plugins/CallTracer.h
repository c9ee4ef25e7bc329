#pragma once

#include "Output.h"
#include "hosting/LogCollector.h"
#include "platform/script/ScriptCallTrace.h"

/// Tells each call of scripts into the application: as a line on standard error, or as an entry of the level "trace" in
/// the log of a document.
class CallTracer final : public ScriptCallObserver
{
public:
    CallTracer(const Output &output, LogCollector &log)
        : m_output(output)
        , m_log(log)
    { }

    void called(const ScriptCallRecord &call) override;

private:
    const Output &m_output;
    LogCollector &m_log;
};
