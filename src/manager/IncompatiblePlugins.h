#pragma once

#include "platform/Snapshot.h"

#include <QMap>
#include <QString>

#include <atomic>
#include <memory>
#include <optional>

class KRPluginManagingState;
class UserDefaults;

/// Plug-in identifiers with the version that is installed.
using InstalledVersions = QMap<QString, std::optional<QString>>;

/// Counts the plug-ins that were disabled because their version is known not to work. The count is kept in the user
/// defaults; it grows as such versions are met and never exceeds the number of such plug-ins that are installed.
///
/// A new list of versions is registered on the thread that downloaded it: every function may be called from any thread.
/// Of two changes of the count at the same time one may be lost.
class IncompatiblePlugins
{
public:
    /// `state` may be null: then nothing is incompatible. `defaults` outlives this object.
    IncompatiblePlugins(std::shared_ptr<KRPluginManagingState> state, UserDefaults &defaults);

    void setInstalled(InstalledVersions versions) { m_installed.set(std::move(versions)); }

    qint64 count() const { return m_count; }
    void setCount(qint64 count);
    /// Registers the installed versions that do not work, and counts those met for the first time. How many they are.
    unsigned registerInstalled();

private:
    qsizetype incompatibleCount(const InstalledVersions &installed) const;

    std::shared_ptr<KRPluginManagingState> m_state;
    UserDefaults &m_defaults;
    Snapshot<InstalledVersions> m_installed;
    std::atomic<qint64> m_count;
};
