#pragma once

#include "document/DocumentFile.h"
#include "support/FakeCommandManager.h"
#include "support/ScriptedPresenter.h"
#include "support/TestEnvironment.h"
#include "support/TestPlugin.h"

#include <QFile>
#include <QStringList>

#include <memory>

/// A plug-in's command that runs with the application's modules, on a document, with a user who answers as a test says.
class ModuleFixture
{
public:
    /// `keys` are further members of the manifest, each followed by a comma.
    explicit ModuleFixture(QByteArray keys = {})
        : m_keys(std::move(keys))
    {
        manager.log = std::make_shared<RecordingLogAction>();
        environment.user = &user;
        QFile::link(QStringLiteral(KORVAN_RESOURCES_FOLDER), environment.path(QStringLiteral("resources")));
    }

    ~ModuleFixture()
    {
        if (command)
            command->abandonSession();
    }

    void setDocument(const QByteArray &json)
    {
        document = documentFromJSON(json).value();
        context.insert(QStringLiteral("document"), QVariant::fromValue(ScriptObjectPointer(document)));
        context.insert(QStringLiteral("selection"), scriptList(document->selection()));
    }

    /// Runs the statements as an async handler, and everything that they wait for without time. What was logged, errors
    /// with "error: " before them.
    QStringList run(const QByteArray &statements)
    {
        return runScript("async function onRun(context) {\n" + statements + "\n}");
    }

    QStringList runScript(const QByteArray &source)
    {
        if (command)
            command->abandonSession();
        m_plugin = std::make_unique<TestPlugin>(environment, source, m_keys);
        command = m_plugin->command();
        manager.tracked = nullptr;
        command->runHandlerWithKey(QStringLiteral("run"), context, &manager);
        return settle();
    }

    /// Everything that waits without time, and what was logged up to now.
    QStringList settle()
    {
        environment.queue.runQueued();
        environment.queue.advance(std::chrono::milliseconds(0));
        if (command->session())
            command->tearDownIfFinished();
        QStringList lines;
        for (const auto &event : std::as_const(manager.log->events)) {
            if (event.startsWith(u"log: "))
                lines.append(event.mid(5));
            else if (event.startsWith(u"error: "))
                lines.append(event.section(u'\n', 0, 0));
        }
        manager.log->events.clear();
        return lines;
    }

    bool isRunning() const { return command->session() != nullptr; }

    TestEnvironment environment;
    ScriptedPresenter user;
    FakeCommandManager manager;
    std::shared_ptr<Document> document;
    QVariantMap context;
    std::shared_ptr<KRPluginCommand> command;

private:
    QByteArray m_keys;
    std::unique_ptr<TestPlugin> m_plugin;
};
