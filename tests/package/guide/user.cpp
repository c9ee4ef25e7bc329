// Uses the program of the guide: opens both of its windows from the menu, chooses a command of a plug-in, reads in the
// console what it has said, and ends the program.

#include <QAbstractItemView>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

namespace {

QMenu *pluginsMenu()
{
    for (auto *const widget : QApplication::topLevelWidgets()) {
        if (auto *const window = qobject_cast<QMainWindow *>(widget))
            return window->menuBar()->actions().first()->menu();
    }
    return nullptr;
}

QAbstractItemModel *contentOf(const char *view)
{
    for (auto *const widget : QApplication::allWidgets()) {
        if (widget->objectName() == view && widget->isVisible())
            return qobject_cast<QAbstractItemView *>(widget)->model();
    }
    return nullptr;
}

void waitForConsole()
{
    auto *const entries = contentOf("ConsoleTable");
    if (!entries || entries->rowCount() == 0) {
        QTimer::singleShot(10, qApp, waitForConsole);
        return;
    }
    QTextStream(stdout) << "Console: " << entries->index(0, 2).data().toString() << Qt::endl;
    QCoreApplication::quit();
}

void use()
{
    const auto actions = pluginsMenu()->actions();
    QStringList texts;
    for (const auto *const action : actions)
        texts.append(action->isSeparator() ? "-" : action->text());
    QTextStream(stdout) << texts.join(", ") << Qt::endl;
    actions[0]->trigger();
    actions[1]->trigger();
    QTextStream(stdout) << "Plug-ins: " << contentOf("PluginList")->index(0, 0).data().toString() << Qt::endl;
    auto *const submenu = actions.last()->menu();
    emit submenu->aboutToShow(); // as the user opens it
    submenu->actions().first()->trigger();
    waitForConsole();
}

void begin()
{
    QTimer::singleShot(0, qApp, use);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(begin)
