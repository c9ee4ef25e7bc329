#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class ConsoleWindow;
class PluginSystem;
class PluginsWindow;
class QWidget;

/// The window for plug-ins and the console: one of each, made when somebody first wants to see it. The program goes on
/// as long as there is a document, not for their sake.
class PluginWindows final : public QObject
{
    Q_OBJECT

public:
    explicit PluginWindows(PluginSystem &plugins);
    ~PluginWindows() override;

    void showPlugins();
    void showConsole();
    bool isConsoleShown() const;
    /// Shows the window for plug-ins, which says how each installation ends.
    void install(const QStringList &paths);
    /// The same with files that the user chooses.
    void chooseFilesToInstall();

    PluginsWindow &plugins();
    ConsoleWindow &console();

signals:
    void consoleShown();
    void quitRequested();

private:
    void setUp(QWidget &window, const QString &name);

    PluginSystem &m_system;
    std::unique_ptr<PluginsWindow> m_plugins;
    std::unique_ptr<ConsoleWindow> m_console;
};
