#pragma once

#include "Output.h"
#include "testing/TestCase.h"

/// Tells what comes of tests, to people as each one ends, to programs at the end.
class TestReport
{
public:
    explicit TestReport(Output &output)
        : m_output(output)
    { }

    void add(const TestResult &result);
    void finish();
    /// Whether all tests that were run have passed, and there was at least one.
    bool isGood() const { return m_failed == 0 && m_passed > 0; }

private:
    void printHeading(const TestResult &result);
    void print(const TestResult &result);
    void printFailure(const TestFailure &failure);
    static OrderedVariantDictionary describe(const TestResult &result);

    Output &m_output;
    QString m_heading;
    QVariantList m_documents;
    int m_passed = 0;
    int m_failed = 0;
    int m_skipped = 0;
};
