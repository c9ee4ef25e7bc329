#pragma once

#include "Options.h"
#include "testing/CommandRuns.h"
#include "testing/TestCase.h"
#include "testing/TestingService.h"

#include <chrono>
#include <memory>
#include <optional>

/// What all tests of one call of the program have in common.
struct TestSettings
{
    GlobalOptions global;
    /// Nil: the file "document.json" beside a test, or else an empty document.
    std::optional<QString> documentFile;
    /// For each test, of time and of the processor's time.
    double limitSeconds = 5;
};

/// One time that a file of tests is loaded, in a session and a host of its own: to learn which tests it has, or to run
/// one of them. Main thread only.
class TestRun
{
public:
    /// `test` is the number of the test to run; nil to learn which there are.
    TestRun(const TestSettings &settings, const TestFile &file, std::optional<int> test);
    ~TestRun();

    /// Nil when all went well. Called once.
    std::optional<TestFailure> perform();
    const QList<TestDescription> &tests() const { return m_service->tests(); }
    const QList<TestLogEntry> &log() const { return m_log; }

private:
    std::shared_ptr<KRPluginCommand> makeCommand() const;
    std::optional<KRError> openDocument();
    void take(const QVariantMap &entry, const QString &sender);
    bool isOver() const { return m_failure || m_service->isOver(); }
    void goOn();
    void end(const QString &reason);
    TestFailure failureFrom(const QVariantMap &entry) const;
    bool isOfPlugin(const QString &call) const;

    TestSettings m_settings;
    TestFile m_file;
    TestHost m_host;
    std::shared_ptr<LogCollector> m_collector;
    KRPluginManager m_manager;
    std::shared_ptr<KRPluginBundle> m_bundle;
    CommandRuns m_commands;
    std::shared_ptr<TestingService> m_service;
    std::shared_ptr<KRPluginCommand> m_command;
    QList<TestLogEntry> m_log;
    std::optional<TestFailure> m_failure;
    /// What a test is to fail of as soon as no script is on the stack.
    QString m_complaint;
};
