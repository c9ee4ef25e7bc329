#include "windows/PluginWindows.h"

#include "look/Shortcuts.h"
#include "plugins/PluginSystem.h"
#include "widgets/console/ConsoleWindow.h"
#include "widgets/plugins/PluginsWindow.h"

#include <QAction>

namespace {

void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

PluginWindows::PluginWindows(PluginSystem &plugins)
    : m_system(plugins)
{ }

PluginWindows::~PluginWindows() = default;

void PluginWindows::setUp(QWidget &window, const QString &name)
{
    window.setObjectName(name);
    window.setAttribute(Qt::WA_QuitOnClose, false);
    const auto add = [&window](const QKeySequence &shortcut, auto work) {
        auto *const action = new QAction(&window);
        action->setShortcut(shortcut);
        connect(action, &QAction::triggered, &window, work);
        window.addAction(action);
    };
    add(closeShortcut(), [&window] { window.close(); });
    add(quitShortcut(), [this] { emit quitRequested(); });
}

PluginsWindow &PluginWindows::plugins()
{
    if (!m_plugins) {
        m_plugins = std::make_unique<PluginsWindow>(m_system.manager());
        setUp(*m_plugins, QStringLiteral("PluginsWindow"));
    }
    return *m_plugins;
}

ConsoleWindow &PluginWindows::console()
{
    if (!m_console) {
        m_console = std::make_unique<ConsoleWindow>(m_system.log(), &m_system.manager());
        setUp(*m_console, QStringLiteral("ConsoleWindow"));
    }
    return *m_console;
}

void PluginWindows::showPlugins()
{
    bringToFront(plugins());
}

void PluginWindows::showConsole()
{
    bringToFront(console());
    emit consoleShown();
}

bool PluginWindows::isConsoleShown() const
{
    return m_console && m_console->isVisible();
}

void PluginWindows::install(const QStringList &paths)
{
    showPlugins();
    plugins().installFiles(paths);
}

void PluginWindows::chooseFilesToInstall()
{
    showPlugins();
    plugins().chooseFiles();
}
