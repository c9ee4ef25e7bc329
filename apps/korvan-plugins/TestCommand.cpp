#include "Commands.h"

#include "testing/TestFiles.h"
#include "testing/TestReport.h"
#include "testing/TestRun.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

/// Which of the tests of all files are meant.
class Selection
{
public:
    Selection(QString filter, bool hasOnly)
        : m_filter(std::move(filter))
        , m_hasOnly(hasOnly)
    { }

    bool isMeant(const TestDescription &test) const { return test.fullTitle().contains(m_filter, Qt::CaseInsensitive); }
    bool isSkipped(const TestDescription &test) const
    {
        return test.mode == TestDescription::Mode::Skip || (m_hasOnly && test.mode != TestDescription::Mode::Only);
    }

private:
    QString m_filter;
    bool m_hasOnly;
};

/// A file, and the tests in it or why it could not be loaded.
struct LoadedFile
{
    TestFile file;
    QList<TestDescription> tests;
    std::optional<TestResult> failure;
};

template <class Work>
TestResult measured(TestResult result, const Work &work)
{
    QElapsedTimer timer;
    timer.start();
    result.failure = work();
    result.milliseconds = double(timer.nsecsElapsed()) / 1e6;
    result.status = result.failure ? TestResult::Status::Failed : TestResult::Status::Passed;
    return result;
}

LoadedFile load(const TestSettings &settings, const TestFile &file)
{
    TestRun run(settings, file, std::nullopt);
    auto result = measured(
        {file, {{}, QStringLiteral("(loading the file)"), {}}, {}, 0, {}, {}}, [&run] { return run.perform(); });
    result.log = run.log();
    return {file, run.tests(), result.failure ? std::optional(result) : std::nullopt};
}

TestResult perform(const TestSettings &settings, const TestFile &file, const TestDescription &test, int number)
{
    TestRun run(settings, file, number);
    auto result = measured({file, test, {}, 0, {}, {}}, [&run] { return run.perform(); });
    result.log = run.log();
    return result;
}

void performAll(const TestSettings &settings, const LoadedFile &loaded, const Selection &selection, TestReport &report)
{
    if (loaded.failure)
        report.add(*loaded.failure);
    for (int number = 0; number < loaded.tests.size(); ++number) {
        const auto &test = loaded.tests.at(number);
        if (!selection.isMeant(test))
            continue;
        report.add(selection.isSkipped(test) ? TestResult{loaded.file, test, TestResult::Status::Skipped, 0, {}, {}}
                                             : perform(settings, loaded.file, test, number));
    }
}

bool hasTests(const LoadedFile &loaded)
{
    return !loaded.tests.isEmpty() || loaded.failure.has_value();
}

/// Why nothing was run, when nothing was; empty otherwise.
QString reasonForNone(const std::vector<LoadedFile> &loaded, const Selection &selection, const QString &filter)
{
    if (std::none_of(loaded.begin(), loaded.end(), hasTests))
        return QStringLiteral("There are no tests in the files: it('title', () => { … }) makes one.");
    const bool hasMeant = std::any_of(loaded.begin(), loaded.end(), [&selection](const auto &file) {
        return file.failure || std::any_of(file.tests.begin(), file.tests.end(), [&selection](const auto &description) {
            return selection.isMeant(description);
        });
    });
    return hasMeant ? QString() : QStringLiteral("No test has \"%1\" in its title.").arg(filter);
}

} // namespace

ExitCode testPlugins(const GlobalOptions &options, const TestOptions &test, Output &output)
{
    const TestSettings settings{options, test.documentFile, test.limitSeconds};
    std::vector<LoadedFile> loaded;
    bool hasOnly = false;
    for (const auto &path : test.paths) {
        const auto files = testFilesAt(path);
        if (!files) {
            output.error(files.error());
            return ExitCode::Failed;
        }
        for (const auto &file : files.value()) {
            loaded.push_back(load(settings, file));
            const auto &tests = loaded.back().tests;
            hasOnly = hasOnly || std::any_of(tests.begin(), tests.end(), [](const auto &description) {
                return description.mode == TestDescription::Mode::Only;
            });
        }
    }
    const Selection selection(test.filter, hasOnly);
    TestReport report(output);
    for (const auto &file : loaded)
        performAll(settings, file, selection, report);
    report.finish();
    if (const auto reason = reasonForNone(loaded, selection, test.filter); !reason.isEmpty())
        output.line(reason);
    return report.isGood() ? ExitCode::Done : ExitCode::Failed;
}
