#include "plugins/PluginsMenuController.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/Menu.h"

#include <QMenu>

PluginsMenuController::PluginsMenuController(PluginSystem &plugins, QMenu &menu, ContextProvider context)
    : m_plugins(plugins)
    , m_mirror(&menu)
    , m_nothing(new QAction(tr("No Plug-ins"), &menu))
    , m_context(std::move(context))
{
    m_nothing->setEnabled(false);
    fill();
    menu.addAction(m_nothing);
    connect(&m_plugins, &PluginSystem::pluginsChanged, this, &PluginsMenuController::fill);
}

PluginsMenuController::~PluginsMenuController() = default;

void PluginsMenuController::fill()
{
    Menu menu;
    m_plugins.manager().addPluginsToMenu(menu, [this](const MenuItem &item) { run(item); });
    m_nothing->setVisible(menu.isEmpty());
    m_mirror.show(menu);
}

void PluginsMenuController::run(const MenuItem &item)
{
    const auto specifier = item.representedObject.value<KRPluginCommandSpecifier>();
    if (!m_plugins.manager().commandWithSpecifier(specifier))
        return; // gone since the menu was filled
    emit commandChosen();
    m_plugins.manager().runHandlerWithKey(KRPluginCommandRunHandlerKey,
        specifier.commandIdentifier().value_or(QString()), specifier.pluginBundleIdentifier().value_or(QString()),
        m_context());
}
