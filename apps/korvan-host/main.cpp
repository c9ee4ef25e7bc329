#include "HostApplication.h"
#include "Screenshots.h"
#include "hosting/UsersLanguage.h"
#include "look/Icons.h"

#include <QApplication>

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
    const auto texts = translatorOfUsersLanguage();
    if (texts)
        QCoreApplication::installTranslator(texts.get());

    if (options.screenshotFolder)
        return writeScreenshots(options);
    HostApplication host(options);
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &host, &HostApplication::quit);
    host.start();
    host.plugins().manager().downloadRemotePluginsBlocklist();
    return QApplication::exec();
}
