#include "Commands.h"

#include "ControlCharacters.h"
#include "validation/BundleValidation.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

OrderedVariantDictionary describe(const Problem &problem)
{
    const bool isError = problem.severity == Problem::Severity::Error;
    return {{QStringLiteral("severity"), isError ? QStringLiteral("error") : QStringLiteral("warning")},
        {QStringLiteral("key"), problem.key}, {QStringLiteral("message"), problem.message},
        {QStringLiteral("file"), problem.file}, {QStringLiteral("line"), problem.position.line},
        {QStringLiteral("column"), problem.position.column}};
}

OrderedVariantDictionary describe(const QString &path, const Problems &problems)
{
    QVariantList list;
    for (const auto &problem : problems)
        list.append(QVariant::fromValue(describe(problem)));
    return {{QStringLiteral("path"), path}, {QStringLiteral("problems"), list}};
}

/// One line for each problem, also where a key or a file has line ends in its name.
QString onOneLine(const QString &text)
{
    return withoutControlCharacters(text, ControlCharacters::All);
}

void print(const Problem &problem, Output &output)
{
    const bool isError = problem.severity == Problem::Severity::Error;
    const auto place = QStringLiteral("%1:%2:%3: ")
                           .arg(onOneLine(QDir::current().relativeFilePath(problem.file)))
                           .arg(problem.position.line)
                           .arg(problem.position.column);
    const Output::Piece severity = isError ? Output::Piece{QStringLiteral("error: "), Output::Colour::Red}
                                           : Output::Piece{QStringLiteral("warning: "), Output::Colour::Yellow};
    const auto key = problem.key.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(onOneLine(problem.key));
    output.line({{place, Output::Colour::Bold}, severity, {onOneLine(problem.message)}, {key, Output::Colour::Dim}});
}

void printSummary(qsizetype bundles, qsizetype errors, qsizetype warnings, Output &output)
{
    const auto counted = [](qsizetype count, const QString &what) {
        return QStringLiteral("%1 %2%3").arg(count).arg(what, count == 1 ? QString() : QStringLiteral("s"));
    };
    output.line(QStringLiteral("%1 checked: %2, %3.")
                    .arg(counted(bundles, QStringLiteral("plug-in")), counted(errors, QStringLiteral("error")),
                        counted(warnings, QStringLiteral("warning"))));
}

} // namespace

ExitCode validatePlugins(const ValidateOptions &validate, Output &output)
{
    for (const auto &path : validate.paths) {
        if (!QFileInfo::exists(path)) {
            output.error(QStringLiteral("There is no file \"%1\".").arg(path));
            return ExitCode::Failed;
        }
    }
    QStringList paths;
    for (const auto &path : validate.paths)
        paths.append(QFileInfo(path).canonicalFilePath());
    ScriptChecker checker;
    const auto found = validateBundles(paths, checker);
    QVariantList bundles;
    qsizetype errors = 0;
    qsizetype warnings = 0;
    for (qsizetype index = 0; index < paths.size(); ++index) {
        const auto &problems = found[std::size_t(index)];
        const auto wrong = std::count_if(problems.begin(), problems.end(),
            [](const Problem &problem) { return problem.severity == Problem::Severity::Error; });
        errors += wrong;
        warnings += problems.size() - wrong;
        bundles.append(QVariant::fromValue(describe(paths[index], problems)));
        for (const auto &problem : problems)
            print(problem, output);
    }
    output.document({{QStringLiteral("bundles"), bundles}});
    printSummary(bundles.size(), errors, warnings, output);
    return errors > 0 ? ExitCode::Failed : ExitCode::Done;
}
