#include "HostApplication.h"
#include "Screenshots.h"
#include "look/Icons.h"
#include "look/Translations.h"

#include <QApplication>

#include <cstdlib>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    // The names under which the command line keeps its data: both work on the same plug-ins and settings.
    QCoreApplication::setOrganizationName(QStringLiteral("korvan"));
    QCoreApplication::setApplicationName(QStringLiteral("korvan"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KORVAN_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Korvan"));
    QGuiApplication::setWindowIcon(programIcon());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const auto options = parseHostOptions(application);
    const Translations translations;

    if (options.screenshotFolder)
        return writeScreenshots(options);
    HostApplication host(options);
    host.start();
    if (options.endsWhenShown) {
        QApplication::processEvents();
        std::_Exit(0); // what comes after is not measured
    }
    // Only now: the question about safe mode is a window too.
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &host, &HostApplication::quit);
    host.plugins().manager().downloadRemotePluginsBlocklist();
    return QApplication::exec();
}
