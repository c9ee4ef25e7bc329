#include "support/FakeCommandManager.h"

std::shared_ptr<KRPluginCommand> FakeCommandManager::stopTrackingLongRunningCommandWithSpecifier(
    const KRPluginCommandSpecifier &specifier)
{
    note(QStringLiteral("stop %1").arg(specifier.stringValue().value_or(QString())));
    return std::exchange(running, nullptr);
}

void FakeCommandManager::trackLongRunningCommand(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete)
{
    note(QStringLiteral("track %1").arg(command->commandSpecifier().stringValue().value_or(QString())));
    tracked = command;
    completionOfTracked = std::move(onComplete);
}

void FakeCommandManager::note(const QString &event)
{
    events.append(event);
    if (log)
        log->events.append(event);
}
