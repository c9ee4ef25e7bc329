#include "manager/BundleDisposal.h"

#include "platform/ParallelWork.h"

#include <algorithm>
#include <vector>

namespace {

using Bundles = std::vector<std::shared_ptr<KRPluginBundle>>;

bool isAtRest(const KRPluginBundle &bundle)
{
    const auto &commands = bundle.commands();
    return std::all_of(commands.begin(), commands.end(), [](const auto &entry) { return entry.second->hasNeverRun(); });
}

Bundles takeBundles(PluginTable &plugins)
{
    Bundles bundles;
    bundles.reserve(std::size_t(plugins.size()));
    for (auto &bundle : plugins)
        bundles.push_back(std::move(bundle));
    plugins.clear();
    return bundles;
}

} // namespace

void disposeOf(PluginTable plugins)
{
    constexpr std::size_t bundlesWorthAThread = 100;
    auto bundles = takeBundles(plugins);
    const auto shares = threadsFor(bundles.size(), bundlesWorthAThread);
    if (shares == 1)
        return;
    // In the order of their memory: what one thread has allocated lies together, and is freed fastest by one thread.
    std::sort(bundles.begin(), bundles.end());
    runInParallel(shares, [&bundles, shares](std::size_t share) {
        const auto end = bundles.size() * (share + 1) / shares;
        for (auto i = bundles.size() * share / shares; i < end; ++i) {
            if (isAtRest(*bundles[i]))
                bundles[i].reset();
        }
    });
}
