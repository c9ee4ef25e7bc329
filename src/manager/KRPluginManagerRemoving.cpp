// How a plug-in is taken off the disk.

#include "manager/KRPluginManager.h"
#include "platform/FileURL.h"
#include "platform/Trash.h"

#include <QPointer>

bool KRPluginManager::movePluginToTrash(const std::shared_ptr<KRPluginBundle> &bundle, KRError *error)
{
    const auto path = bundle ? pathFromFileURL(bundle->url()) : QByteArray();
    if (path.isEmpty())
        return false;
    const QPointer<KRPluginManager> self(this); // what a script does at its end may end the manager
    const auto running = runningCommands();
    for (const auto &command : running) {
        if (self && command.specifier.pluginBundleIdentifier() == bundle->identifier())
            stopCommand(command.specifier);
    }
    return moveToTrash(path, error).has_value();
}
