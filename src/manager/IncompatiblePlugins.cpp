#include "manager/IncompatiblePlugins.h"

#include "platform/UserDefaults.h"
#include "state/KRPluginManagingState.h"

#include <algorithm>

namespace {

const auto countKey = QStringLiteral("KRPluginManagerNumberOfIncompatiblePluginsDisabled");

} // namespace

IncompatiblePlugins::IncompatiblePlugins(std::shared_ptr<KRPluginManagingState> state, UserDefaults &defaults)
    : m_state(std::move(state))
    , m_defaults(defaults)
    , m_count(defaults.integerForKey(countKey))
{ }

void IncompatiblePlugins::setCount(qint64 count)
{
    m_defaults.setValue(countKey, count);
    m_count = count;
}

unsigned IncompatiblePlugins::registerInstalled()
{
    const auto snapshot = m_installed.get();
    const auto &installed = snapshot ? *snapshot : InstalledVersions();
    const auto newly = m_state ? m_state->registerPluginIncompatibilityForVersions(installed) : 0;
    // Without signs: a count that somebody made negative becomes the number of such plug-ins.
    setCount(qint64(std::min(quint64(count()) + newly, quint64(incompatibleCount(installed)))));
    return newly;
}

qsizetype IncompatiblePlugins::incompatibleCount(const InstalledVersions &installed) const
{
    qsizetype number = 0;
    for (auto plugin = installed.begin(); plugin != installed.end(); ++plugin)
        number += m_state && m_state->isPluginWithIdentifier(plugin.key(), plugin.value()) ? 1 : 0;
    return number;
}
