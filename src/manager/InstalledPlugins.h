#pragma once

#include "bundles/PluginTable.h"
#include "updates/PluginInstallation.h"

#include <QString>

#include <mutex>
#include <optional>

/// Where the registry's plug-ins are, for threads that the registry itself does not belong to. Thread-safe.
class InstalledPlugins
{
public:
    void set(const PluginTable &plugins)
    {
        auto replaced = plugins;
        const std::lock_guard lock(m_mutex);
        m_plugins.swap(replaced);
    }

    /// Nil when no plug-in has the identifier.
    std::optional<InstalledPlugin> find(const QString &identifier) const
    {
        const std::lock_guard lock(m_mutex); // no other thread is left with a share of a plug-in
        const auto found = m_plugins.constFind(identifier);
        if (found == m_plugins.constEnd())
            return {};
        return InstalledPlugin{found.value()->url(), found.value()->version()};
    }

private:
    mutable std::mutex m_mutex;
    PluginTable m_plugins;
};
