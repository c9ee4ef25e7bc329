#include "platform/script/JavaScriptCorePrivate.h"

#include <dlfcn.h>

namespace {

/// The engine's library as it is loaded, wherever the dynamic linker has put its names.
void *engineLibrary()
{
    Dl_info info;
    if (::dladdr(reinterpret_cast<const void *>(&JSEvaluateScript), &info) == 0)
        return RTLD_DEFAULT;
    void *library = ::dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    return library ? library : RTLD_DEFAULT;
}

template <class Function>
void find(void *library, Function &function, const char *name)
{
    function = reinterpret_cast<Function>(::dlsym(library, name));
}

} // namespace

const JavaScriptCorePrivate &JavaScriptCorePrivate::entryPoints()
{
    static const JavaScriptCorePrivate found = [] {
        JavaScriptCorePrivate result;
        void *const library = engineLibrary();
        find(library, result.setExecutionTimeLimit, "JSContextGroupSetExecutionTimeLimit");
        find(library, result.clearExecutionTimeLimit, "JSContextGroupClearExecutionTimeLimit");
        find(library, result.setUnhandledRejectionCallback, "JSGlobalContextSetUnhandledRejectionCallback");
        find(library, result.setIncludesNativeCallStack,
            "JSGlobalContextSetIncludesNativeCallStackWhenReportingExceptions");
        find(library, result.globalContextOf, "JSObjectGetGlobalContext");
        find(library, result.weakCreate, "JSWeakCreate");
        find(library, result.weakGetObject, "JSWeakGetObject");
        find(library, result.weakRelease, "JSWeakRelease");
        find(library, result.lock, "JSLock");
        find(library, result.unlock, "JSUnlock");
        // A member function without arguments of the class that a context group is.
        find(library, result.runPromiseReactions, "_ZN3JSC2VM15drainMicrotasksEv");
        find(library, result.collectNow, "JSSynchronousGarbageCollectForDebugging");
        find(library, result.memoryStatistics, "JSGetMemoryUsageStatistics");
        find(library, result.enableSamplingProfiler, "JSContextGroupEnableSamplingProfiler");
        find(library, result.disableSamplingProfiler, "JSContextGroupDisableSamplingProfiler");
        find(library, result.takeSamples, "JSContextGroupTakeSamplesFromSamplingProfiler");
        return result;
    }();
    return found;
}
