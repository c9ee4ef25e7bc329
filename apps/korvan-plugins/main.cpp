#include "CommandLine.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // The names under which the reference host keeps its data: both work on the same plug-ins and settings.
    QCoreApplication::setOrganizationName(QStringLiteral("korvan"));
    QCoreApplication::setApplicationName(QStringLiteral("korvan"));
    return static_cast<int>(runCommandLine(argc, argv));
}
