#include "plugins/PluginsMenuController.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/Menu.h"
#include "platform/MenuShortcut.h"

#include <QMenu>

namespace {

void removeShortcuts(Menu &menu, const PluginsMenuController::Shortcuts &taken)
{
    auto items = menu.takeItems();
    for (auto &item : items) {
        if (taken.contains(keySequenceOf(item)))
            item.keyEquivalent.clear();
        if (item.submenu)
            removeShortcuts(*item.submenu, taken);
    }
    menu.setItems(std::move(items));
}

} // namespace

PluginsMenuController::PluginsMenuController(
    PluginSystem &plugins, QMenu &menu, const Shortcuts &taken, ContextProvider context)
    : m_plugins(plugins)
    , m_mirror(&menu)
    , m_nothing(new QAction(tr("No Plug-ins"), &menu))
    , m_taken(taken)
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
    removeShortcuts(menu, m_taken);
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
