#include "CommandLine.h"
#include "Output.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // The names under which the reference host keeps its data: both work on the same plug-ins and settings.
    QCoreApplication::setOrganizationName(QStringLiteral("korvan"));
    QCoreApplication::setApplicationName(QStringLiteral("korvan"));
    const auto exitCode = runCommandLine(argc, argv);
    if (isStandardOutputComplete())
        return static_cast<int>(exitCode);
    printToStandardError(QStringLiteral("korvan-plugins: The output could not be written."));
    return static_cast<int>(exitCode == ExitCode::Done ? ExitCode::Failed : exitCode);
}
