#pragma once

#include "platform/script/ScriptObject.h"
#include "platform/script/ScriptValue.h"
#include "testing/CommandRuns.h"
#include "testing/TestCase.h"

#include <QVariantList>

#include <map>
#include <memory>
#include <optional>

/// The service "testing": what the module for tests asks of the program. One for each time that a file of tests is
/// loaded. Main thread only.
class TestingService final : public ScriptObject
{
public:
    /// `wanted` is the number of the test to run; -1 to tell which tests there are. What is referred to has to outlive
    /// the session.
    TestingService(const TestFile &file, int wanted, TestHost &host, CommandRuns &commands);
    ~TestingService() override;

    const QList<TestDescription> &tests() const { return m_tests; }
    bool isOver() const { return m_isOver; }
    const QString &difference() const { return m_difference; }
    /// Ends the test with an error from outside. False when it has not even begun, or was ended so before.
    bool end(const QString &reason);
    /// Whether the test's own work is done, so that only what is due now still runs.
    bool isFinishing() const { return m_afterwards.has_value(); }
    /// Says that all of that has run.
    void finish();
    /// The command that the test itself is, so that it meets the document that it opens.
    void setCommand(const std::weak_ptr<KRPluginCommand> &command) { m_command = command; }
    void addLog(const QVariantMap &entry);

    const ScriptClass &scriptClass() const override;

private:
    // Running
    QString file() const;
    int wanted() const { return m_wanted; }
    void list(const QVariantList &tests);
    void passed() { m_isOver = true; }
    void failed(const QVariant &difference);
    void onStuck(const QVariant &callback);
    void afterwards(const QVariant &callback);
    // The plug-in
    void runCommand(
        const QString &identifier, const QString &handler, const QVariantMap &context, const QVariant &done);
    /// The commands that register what the plug-in supplies.
    QStringList startupCommands() const;
    QStringList suppliers() const;
    void supplyData(const QString &supplier, const QVariantList &layers, const QVariant &done);
    QVariantList log() const { return m_log; }
    void clearLog() { m_log.clear(); }
    // The document
    void openDocumentFile(const QString &file);
    void openDocument(const QString &json);
    void useDocument(Result<std::shared_ptr<Document>> document);
    QString snapshot() const;
    void undo();
    void redo();
    QString undoText() const;
    // Everybody else
    double now() const;
    void advance(double milliseconds, const QVariant &done);
    void answer(const QVariantList &answers);
    bool cancelProgress();
    QVariantList shown() const;
    void answerRequest(const QString &url, const QVariantMap &answer);
    QVariantList requests() const;

    const TestFile &m_file;
    int m_wanted;
    TestHost &m_host;
    CommandRuns &m_commands;
    std::weak_ptr<KRPluginCommand> m_command;
    QList<TestDescription> m_tests;
    bool m_isOver = false;
    QString m_difference;
    std::optional<ScriptValue> m_stuck;
    std::optional<ScriptValue> m_afterwards;
    QVariantList m_log;
    std::map<int, std::unique_ptr<ScheduledCall>> m_advances;
    int m_latestAdvance = 0;
};
