#include "commands/KRPluginLogAction.h"

void KRPluginLogAction::logFromCommand(
    const QVariantMap &entry, const QString &from, const std::shared_ptr<KRPluginCommand> &)
{
    log(entry, from);
}
