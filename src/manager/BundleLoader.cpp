#include "manager/BundleLoader.h"

#include "bundles/PluginLoading.h"
#include "commands/CoreModules.h"
#include "platform/ParallelWork.h"

#include <atomic>

std::vector<LoadedBundle> loadBundles(const std::vector<QByteArray> &paths)
{
    constexpr std::size_t bundlesWorthAThread = 16;
    const auto coreModules = coreModulesOfApplication();
    std::vector<LoadedBundle> loaded(paths.size());
    std::atomic<std::size_t> next = 0;
    runInParallel(threadsFor(paths.size(), bundlesWorthAThread), [&](std::size_t) {
        PluginLoading loading{coreModules, {}, {}};
        for (auto index = next++; index < paths.size(); index = next++) {
            loaded[index].bundle = KRPluginBundle::initWithPath(paths[index], loading);
            loaded[index].messages = loading.messages.take();
        }
    });
    return loaded;
}
