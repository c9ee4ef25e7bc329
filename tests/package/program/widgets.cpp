// A host with a menu: shows the plug-ins of the folder that it is given, and chooses the first command.

#include <commands/KRPluginCommandSpecifier.h>
#include <manager/KRPluginManager.h>
#include <platform/Menu.h>
#include <widgets/MenuMirror.h>
#include <widgets/MessageBoxAlerts.h>

#include <QApplication>
#include <QMenu>
#include <QTextStream>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const MessageBoxAlerts alerts;
    KRPluginManager manager({QUrl::fromLocalFile(QApplication::arguments().at(1) + "/")}, nullptr, nullptr);
    manager.reloadPlugins();
    Menu plugins;
    manager.addPluginsToMenu(plugins, [](const MenuItem &item) {
        const auto specifier = item.representedObject.value<KRPluginCommandSpecifier>();
        QTextStream(stdout) << specifier.stringValue().value_or("(none)") << Qt::endl;
    });
    QMenu menu;
    MenuMirror mirror(&menu);
    mirror.show(plugins);
    auto *const submenu = menu.actions().first()->menu();
    emit submenu->aboutToShow(); // as the user opens it
    submenu->actions().first()->trigger();
}
