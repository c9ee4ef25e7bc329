#pragma once

#include "bundles/KRPluginBundle.h"
#include "manager/KRPluginManager.h"
#include "platform/script/ScriptValue.h"
#include "testing/TestHost.h"

#include <list>
#include <memory>

/// The commands of a plug-in that a test runs. Main thread only.
class CommandRuns
{
public:
    /// `bundle` may be null: there are no commands then.
    CommandRuns(TestHost &host, KRPluginManager &manager, std::shared_ptr<KRPluginBundle> bundle);

    /// Runs a handler soon. `done` is called with why it has failed (null when it has not), and with a dictionary
    /// "returnValue", "log" and "isRunning", as soon as it has returned and a promise that it has returned has settled.
    /// Throws a ScriptException when there is no such handler.
    void run(const QString &identifier, const QString &handler, const QVariantMap &context, const ScriptValue &done);

    /// The commands that have such a handler.
    QStringList identifiersWithHandler(const QString &handler) const;
    /// What the plug-in's running commands offer to put into layers.
    QList<DataSupplier> suppliers() const;
    /// Asks a supplier, by its identifier or its name, for values for layers. `done` is called with why there are none
    /// (null when there are), and with a list of a text or null for each layer. Throws a ScriptException when there is
    /// no such supplier.
    void supply(const QString &supplier, const QVariantList &layers, const ScriptValue &done) const;

    /// Takes an entry that one of the commands has logged. False for an uncaught error that comes when none of its runs
    /// is awaited.
    bool take(const QVariantMap &entry, const QString &identifier);
    /// Calls back for the runs that are done. Answers whether there were any.
    bool finish();

private:
    struct Started
    {
        std::shared_ptr<KRPluginCommand> command;
        QString key;
        QVariantMap context;
        ScriptValue done;
        QVariantList log;
        QString error;
        bool hasReturned = false;
    };

    std::shared_ptr<KRPluginCommand> findCommand(const QString &identifier, const QString &handler) const;
    bool isDone(const Started &run) const;
    bool isRunning(const Started &run) const;
    void callBack(const Started &run);

    TestHost &m_host;
    KRPluginManager &m_manager;
    std::shared_ptr<KRPluginBundle> m_bundle;
    std::list<std::shared_ptr<Started>> m_started;
};
