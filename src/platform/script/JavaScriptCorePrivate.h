#pragma once

#include <JavaScriptCore/JavaScript.h>

/// Entry points that JavaScriptCore exports without declaring them in a header. Each is looked up at run time and may
/// be null; every user says what it does without it.
struct JavaScriptCorePrivate
{
    using ShouldTerminate = bool (*)(JSContextRef context, void *data);
    using WeakReference = struct OpaqueJSWeak *;

    /// Limits the processor time of each entry into the group's scripts, in seconds. The callback answers whether to
    /// stop; it has to set the limit anew when it lets a script go on.
    void (*setExecutionTimeLimit)(JSContextGroupRef, double seconds, ShouldTerminate, void *data) = nullptr;
    void (*clearExecutionTimeLimit)(JSContextGroupRef) = nullptr;

    /// The function is called with a promise and its reason once the promise was rejected with nobody listening.
    void (*setUnhandledRejectionCallback)(JSGlobalContextRef, JSObjectRef function, JSValueRef *exception) = nullptr;

    /// Whether an exception that reaches the host is to carry the program's own stack. It does from the start, for the
    /// engine's inspector, and finding the names of those functions takes far longer than all the rest of an exception.
    void (*setIncludesNativeCallStack)(JSGlobalContextRef, bool) = nullptr;

    /// The context that an object was made in.
    JSGlobalContextRef (*globalContextOf)(JSObjectRef) = nullptr;

    WeakReference (*weakCreate)(JSContextGroupRef, JSObjectRef) = nullptr;
    /// Null once the object was collected.
    JSObjectRef (*weakGetObject)(WeakReference) = nullptr;
    void (*weakRelease)(JSContextGroupRef, WeakReference) = nullptr;

    /// The group's lock, which every call of the engine takes for itself; the entry point below does not.
    void (*lock)(JSContextRef) = nullptr;
    void (*unlock)(JSContextRef) = nullptr;
    /// Runs the reactions of settled promises, and those that they cause in turn. A script that is stopped meanwhile
    /// takes all that wait with it.
    void (*runPromiseReactions)(JSContextGroupRef) = nullptr;

    /// Collects everything that can be collected before it returns.
    void (*collectNow)(JSContextRef) = nullptr;
    /// What the group holds: an object with "globalObjectCount" (contexts), "objectCount", "heapSize" and more.
    JSObjectRef (*memoryStatistics)(JSContextRef) = nullptr;

    /// Looks at the scripts' stacks about a thousand times a second, from a thread of its own, until it is switched
    /// off. False when this engine cannot.
    bool (*enableSamplingProfiler)(JSContextGroupRef) = nullptr;
    void (*disableSamplingProfiler)(JSContextGroupRef) = nullptr;
    /// What was seen since the last call, to be released by the caller: JSON text with "interval" (seconds), "traces"
    /// (each with "timestamp" and "frames", innermost first: "sourceID", "name", "location", "line", "column",
    /// "category") and "sources" ("sourceID" and "url"). Unknown numbers are 2^32-1.
    JSStringRef (*takeSamples)(JSContextGroupRef) = nullptr;

    static const JavaScriptCorePrivate &entryPoints();
};
