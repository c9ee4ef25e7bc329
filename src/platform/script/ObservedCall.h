#pragma once

#include "platform/script/ScriptCallTrace.h"

#include <JavaScriptCore/JavaScript.h>

#include <span>

/// A value as ScriptCallRecord has it. Runs no script.
QString traceText(JSContextRef context, JSValueRef value);
QStringList traceTexts(JSContextRef context, std::span<const JSValueRef> values);

/// Makes a call, for whoever observes calls. `describe` answers its name and arguments; it is asked for an observer
/// only.
template <class Describe, class Call>
JSValueRef observedCall(JSContextRef context, JSValueRef *exception, const Describe &describe, const Call &call)
{
    if (!ScriptCallObserver::current())
        return call();
    static int depth = 0;
    ScriptCallRecord record = describe();
    record.depth = depth++;
    const auto start = std::chrono::steady_clock::now();
    const auto result = call();
    record.duration = std::chrono::steady_clock::now() - start;
    --depth;
    record.hasFailed = exception && *exception;
    if (result && !record.hasFailed)
        record.result = traceText(context, result);
    if (auto *const observer = ScriptCallObserver::current())
        observer->called(record);
    return result;
}
