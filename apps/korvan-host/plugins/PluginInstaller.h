#pragma once

#include "platform/KRError.h"

#include <QString>

#include <optional>

class KRPluginManager;

/// Takes plug-ins in that the user drops on a window or chooses in a dialog.
class PluginInstaller
{
public:
    virtual ~PluginInstaller();

    /// Whether the path is something that install() could be asked for.
    virtual bool accepts(const QString &path) const = 0;
    /// What stays where it is and is copied. Nil, or what went wrong.
    virtual std::optional<KRError> install(const QString &path) = 0;
};

/// Installs bundles and zip archives of them through the manager: into the place of the plug-in of the same identifier,
/// else into the application's plug-in folder. Reloads then.
class ManagedInstaller final : public PluginInstaller
{
public:
    explicit ManagedInstaller(KRPluginManager &manager)
        : m_manager(manager)
    { }

    bool accepts(const QString &path) const override;
    std::optional<KRError> install(const QString &path) override;

private:
    KRPluginManager &m_manager;
};
