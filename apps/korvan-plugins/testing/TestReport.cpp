#include "TestReport.h"

#include "testing/TestLog.h"

namespace {

QString statusName(TestResult::Status status)
{
    switch (status) {
    case TestResult::Status::Passed:
        return QStringLiteral("passed");
    case TestResult::Status::Failed:
        return QStringLiteral("failed");
    case TestResult::Status::Skipped:
        break;
    }
    return QStringLiteral("skipped");
}

Output::Piece sign(TestResult::Status status)
{
    switch (status) {
    case TestResult::Status::Passed:
        return {QStringLiteral("  ✓ "), Output::Colour::Green};
    case TestResult::Status::Failed:
        return {QStringLiteral("  ✗ "), Output::Colour::Red};
    case TestResult::Status::Skipped:
        break;
    }
    return {QStringLiteral("  - "), Output::Colour::Yellow};
}

QString indented(QString text)
{
    return QStringLiteral("      ") + text.replace(u'\n', QStringLiteral("\n      "));
}

OrderedVariantDictionary describe(const TestFailure &failure)
{
    return {
        {QStringLiteral("message"), failure.message},
        {QStringLiteral("file"), failure.file},
        {QStringLiteral("line"), failure.line},
        {QStringLiteral("column"), failure.column},
        {QStringLiteral("stack"), failure.stack},
        {QStringLiteral("difference"),
            failure.difference.isEmpty() ? QVariant::fromValue(nullptr) : QVariant(failure.difference)},
    };
}

} // namespace

void TestReport::add(const TestResult &result)
{
    using Status = TestResult::Status;
    auto &count = result.status == Status::Passed ? m_passed : result.status == Status::Failed ? m_failed : m_skipped;
    ++count;
    if (m_output.isJSON())
        m_documents.append(QVariant::fromValue(describe(result)));
    else
        print(result);
}

OrderedVariantDictionary TestReport::describe(const TestResult &result)
{
    QVariantList log;
    for (const auto &[entry, origin] : result.log) {
        log.append(QVariant::fromValue(OrderedVariantDictionary{
            {QStringLiteral("level"), entry.value(QStringLiteral("level"))},
            {QStringLiteral("stringValue"), textOfEntry(entry)},
        }));
    }
    return {
        {QStringLiteral("file"), result.file.path},
        {QStringLiteral("suite"), result.test.suite},
        {QStringLiteral("title"), result.test.title},
        {QStringLiteral("status"), statusName(result.status)},
        {QStringLiteral("milliseconds"), result.milliseconds},
        {QStringLiteral("log"), log},
        {QStringLiteral("error"),
            result.failure ? QVariant::fromValue(::describe(*result.failure)) : QVariant::fromValue(nullptr)},
    };
}

void TestReport::printHeading(const TestResult &result)
{
    if (m_heading == result.file.path)
        return;
    m_heading = result.file.path;
    m_output.line(m_heading, Output::Colour::Bold);
}

void TestReport::print(const TestResult &result)
{
    printHeading(result);
    m_output.line({sign(result.status), {result.test.fullTitle()}});
    for (const auto &[entry, origin] : result.log) {
        if (result.failure || origin == TestLogEntry::Origin::Test)
            m_output.line(indented(textOfEntry(entry)), Output::Colour::Dim);
    }
    if (result.failure)
        printFailure(*result.failure);
}

void TestReport::printFailure(const TestFailure &failure)
{
    m_output.line(indented(failure.message), Output::Colour::Red);
    auto calls = failure.stack;
    if (calls.isEmpty() && failure.line > 0)
        calls.append(QStringLiteral("%1:%2:%3").arg(failure.file).arg(failure.line).arg(failure.column));
    for (const auto &call : calls)
        m_output.line(indented(QStringLiteral("    at ") + call));
    const auto lines = failure.difference.split(u'\n', Qt::SkipEmptyParts);
    for (const auto &line : lines) {
        const auto colour = line.startsWith(u'-') ? Output::Colour::Green
            : line.startsWith(u'+')               ? Output::Colour::Red
                                                  : Output::Colour::Dim;
        m_output.line(indented(line), colour);
    }
    if (!lines.isEmpty())
        m_output.line(indented(QStringLiteral("(- expected, + what came)")), Output::Colour::Dim);
}

void TestReport::finish()
{
    m_output.document({{QStringLiteral("tests"), m_documents}, {QStringLiteral("passed"), m_passed},
        {QStringLiteral("failed"), m_failed}, {QStringLiteral("skipped"), m_skipped}});
    const auto skipped = m_skipped > 0 ? QStringLiteral(", %1 skipped").arg(m_skipped) : QString();
    m_output.line(QStringLiteral("%1 passed, %2 failed%3.").arg(m_passed).arg(m_failed).arg(skipped),
        isGood() ? Output::Colour::Green : Output::Colour::Red);
}
