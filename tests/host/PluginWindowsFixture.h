#pragma once

#include "HostFixture.h"
#include "MenuClicks.h"

#include "bundles/KRPluginBundle.h"
#include "widgets/console/ConsoleWindow.h"
#include "widgets/plugins/PluginsWindow.h"
#include "windows/PluginWindows.h"

#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTableView>

/// A command "Greet" with a shortcut, for a manifest, and its script.
inline const QByteArray greetCommand =
    R"({"name": "Greet", "identifier": "greet", "script": "script.js", "shortcut": "cmd alt g"})";
inline const QByteArray greetScript = "function onRun(context) { print('Hello, ' + context.document.name()); }";

/// The whole program with the window for plug-ins and the console, used with mouse and keyboard.
class PluginWindowsFixture : protected HostFixture
{
protected:
    PluginsWindow &pluginsWindow() const { return m_host->pluginWindows().plugins(); }
    ConsoleWindow &console() const { return m_host->pluginWindows().console(); }
    template <class Widget>
    static Widget &find(const QWidget &window, const QString &name)
    {
        auto *const widget = window.findChild<Widget *>(name);
        if (!widget)
            qFatal("there is no %s", qPrintable(name));
        return *widget;
    }
    DocumentWindow &startActive()
    {
        auto &window = start();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("the window does not become active");
        return window;
    }
    void choose(const QStringList &titles) const { chooseFromMenu(*window().menuBar(), titles); }
    void showPlugins() const { choose({QStringLiteral("Plugins"), QStringLiteral("Plug-ins…")}); }
    void showConsole() const { choose({QStringLiteral("Window"), QStringLiteral("Console")}); }
    void click(const QString &button) const
    {
        QTest::mouseClick(&find<QPushButton>(pluginsWindow(), button), Qt::LeftButton);
    }
    QListView &list() const { return find<QListView>(pluginsWindow(), QStringLiteral("PluginList")); }
    QTableView &table() const { return find<QTableView>(console(), QStringLiteral("ConsoleTable")); }
    QString notice() const
    {
        const auto &banner = find<QWidget>(pluginsWindow(), QStringLiteral("NoticeBanner"));
        return banner.isVisible() ? find<QLabel>(banner, QStringLiteral("BannerText")).text() : QString();
    }
    bool isEnabled(const QString &identifier) const
    {
        const auto plugin = m_host->plugins().manager().plugins().value(identifier);
        return plugin && plugin->isEnabled();
    }
};
