#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// A file of tests, and the plug-in that it tests.
struct TestFile
{
    QString path;
    /// The plug-in's folder; empty for a file that is in none.
    QString bundle;

    /// As it is seen from the plug-in's folder, or else its plain name.
    QString name() const;
};

/// A test as its file describes it.
struct TestDescription
{
    enum class Mode {
        Run,
        Skip,
        /// Tests that are not marked so are skipped then.
        Only
    };

    /// The titles of the groups around it, outermost first.
    QStringList suite;
    QString title;
    Mode mode = Mode::Run;

    QString fullTitle() const { return (suite + QStringList{title}).join(QStringLiteral(" › ")); }
};

/// Why a test has failed.
struct TestFailure
{
    QString message;
    /// Of the plug-in or of the test, seen from the plug-in's folder; "" and 0 when not known.
    QString file;
    int line = 0;
    int column = 0;
    /// One call each.
    QStringList stack;
    /// What was expected ("-") and what came instead ("+"), line by line; empty when there is nothing to compare.
    QString difference;
};

struct TestLogEntry
{
    enum class Origin { Test, Command };

    /// With "level" and "stringValue".
    QVariantMap entry;
    Origin origin = Origin::Test;
};

struct TestResult
{
    enum class Status { Passed, Failed, Skipped };

    TestFile file;
    TestDescription test;
    Status status = Status::Passed;
    double milliseconds = 0;
    std::optional<TestFailure> failure;
    /// What the test and the commands that it ran have logged.
    QList<TestLogEntry> log;
};
