#include "CommandLineEnvironment.h"

#include "Output.h"

#include <unistd.h>

CommandLineEnvironment::CommandLineEnvironment(const GlobalOptions &options)
    : ConfiguredEnvironment(options)
    , m_presenter(STDIN_FILENO)
{ }

CommandLineEnvironment::~CommandLineEnvironment() = default;

void CommandLineEnvironment::log(const QVariantMap &entry, const QString &)
{
    printToStandardError(entry.value(QStringLiteral("stringValue")).toString());
}

void CommandLineEnvironment::systemLog(const QString &line)
{
    printToStandardError(line);
}
