#pragma once

#include "commands/KRPluginCommand.h"
#include "platform/script/ScriptValue.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"
#include "support/servers/LoopbackServer.h"

#include <QFile>
#include <QtTest>

#include <memory>

/// A command with the globals of the application, and a server for it.
class FetchFixture
{
protected:
    void begin()
    {
        m_environment = std::make_unique<TestEnvironment>();
        QVERIFY(QFile::link(QStringLiteral(KORVAN_RESOURCES_FOLDER), m_environment->path(QStringLiteral("resources"))));
        m_server = std::make_unique<LoopbackServer>();
    }

    void end()
    {
        if (m_command)
            m_command->abandonSession();
        m_command.reset();
        m_server.reset();
        m_environment.reset();
    }

    /// Runs an asynchronous expression, in which BASE is the server's URL, to its end.
    QString result(const QString &expression)
    {
        start(expression);
        const auto promise = m_command->returnValue().value<ScriptValue>();
        m_environment->queue.runUntil([&] { return promise.isSettled(); });
        return promise.settledValue().toString();
    }

    void start(const QString &expression)
    {
        const auto source =
            QStringLiteral("const BASE = '%1';\nasync function onRun() {\n"
                           "    try { return String(await (%2)); } catch (error) { return String(error); }\n}");
        const auto base = m_server->url(QStringLiteral("")).toString();
        m_command = std::make_shared<KRPluginCommand>(
            std::make_shared<KRPluginScript>(source.arg(base, expression), QStringLiteral("fetch.js")),
            QStringLiteral("fetch"), QStringLiteral("Fetch"), QStringLiteral("onRun"),
            KRPluginCommand::Scope::Document);
        m_command->run({}, nullptr);
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::shared_ptr<KRPluginCommand> m_command;
};
