#pragma once

#include "platform/Export.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

class DataSuppliers;
class KRPluginCommand;
class KRPluginCommandSpecifier;
class KRPluginLogAction;

/// What a command needs of the manager that runs it. It holds it weakly. Main thread only.
class KORVAN_EXPORT KRPluginCommandManager : public QObject
{
public:
    /// Called with the command's whole log when it has finished.
    using Completion = std::function<void(const QString &logString)>;

    ~KRPluginCommandManager() override;

    /// Null when no host keeps logs.
    virtual std::shared_ptr<KRPluginLogAction> logAction() const = 0;
    /// Where a script that is no file yet would be saved.
    virtual QUrl urlForUnsavedPlugin() const = 0;
    /// The command that was tracked under the specifier and is so no more; null when there is none.
    virtual std::shared_ptr<KRPluginCommand> stopTrackingLongRunningCommandWithSpecifier(
        const KRPluginCommandSpecifier &specifier) = 0;
    /// Keeps the command, and calls back when its session has finished. The callback may be null.
    virtual void trackLongRunningCommand(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete) = 0;
    /// Where commands register what they offer to put into layers; null (the default) where nobody asks for it.
    virtual DataSuppliers *dataSuppliers();
};
