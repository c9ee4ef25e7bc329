#pragma once

#include "commands/KRPluginCommand.h"
#include "commands/KRPluginCommandManager.h"
#include "support/RecordingLogAction.h"

#include <QStringList>

/// A manager that writes down what commands ask of it and answers what a test has put in.
class FakeCommandManager final : public KRPluginCommandManager
{
public:
    std::shared_ptr<KRPluginLogAction> logAction() const override { return log; }
    QUrl urlForUnsavedPlugin() const override { return unsavedPlugin; }
    std::shared_ptr<KRPluginCommand> stopTrackingLongRunningCommandWithSpecifier(
        const KRPluginCommandSpecifier &specifier) override;
    void trackLongRunningCommand(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete) override;
    DataSuppliers *dataSuppliers() override { return suppliers; }

    /// Null: nobody asks for data.
    DataSuppliers *suppliers = nullptr;
    /// Null: commands keep their entries themselves.
    std::shared_ptr<RecordingLogAction> log;
    QUrl unsavedPlugin = QUrl(QStringLiteral("file:///Plugins/Untitled.korvanplugin/"));
    /// The command that is still running, of whatever specifier; handed out once.
    std::shared_ptr<KRPluginCommand> running;
    /// What was handed over last.
    std::shared_ptr<KRPluginCommand> tracked;
    Completion completionOfTracked;
    /// "stop specifier" and "track specifier", in the order of the calls. They stand among the log action's too.
    QStringList events;

private:
    void note(const QString &event);
};
