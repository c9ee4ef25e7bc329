#include "validation/BundleValidation.h"

#include "bundles/BundleLimits.h"
#include "platform/ParallelWork.h"
#include "validation/ManifestRules.h"
#include "validation/ManifestSchema.h"
#include "validation/ScriptRules.h"
#include "validation/SourceText.h"

#include <QFileInfo>

#include <atomic>

namespace {

Problems only(const QString &file, const QString &message, const TextPosition &position = {})
{
    return {{Problem::Severity::Error, {}, message, file, position}};
}

Problems validateManifest(const QString &bundle, const QString &text, ScriptChecker &checker)
{
    const auto file = Manifest::path(bundle);
    const auto reading = readJSON(text);
    if (const auto *const error = std::get_if<JSONSyntaxError>(&reading))
        return only(file, error->message, positionIn(text, error->offset));
    const auto &root = std::get<JSONNode>(reading);
    if (!root.isObject())
        return only(file, QStringLiteral("A manifest has to be an object."), positionIn(text, root.offset));
    Manifest manifest(bundle, text, root);
    checkSchema(manifest);
    checkIdentifier(manifest);
    checkVersions(manifest);
    checkURLs(manifest);
    checkIcon(manifest);
    const auto commands = commandsOf(manifest);
    checkCommands(manifest, commands);
    checkShortcuts(manifest, commands);
    checkMenu(manifest, commands);
    checkScripts(manifest, commands, checker);
    return manifest.problems();
}

} // namespace

Problems validateBundle(const QString &path, ScriptChecker &checker)
{
    const QFileInfo folder(path);
    if (!folder.isDir())
        return only(path, QStringLiteral("A plug-in has to be a folder."));
    if (folder.suffix().compare(u"korvanplugin", Qt::CaseInsensitive) != 0)
        return only(path, QStringLiteral("The name of a plug-in's folder has to end in “.korvanplugin”."));
    const auto file = Manifest::path(path);
    if (!QFileInfo::exists(file))
        return only(file, QStringLiteral("There is no file “Contents/Korvan/manifest.json”."));
    const auto text = readSourceText(file, largestManifest);
    if (const auto *const error = std::get_if<SourceTextError>(&text))
        return only(file, error->message, error->position);
    return validateManifest(path, std::get<QString>(text), checker);
}

std::vector<Problems> validateBundles(const QStringList &paths, ScriptChecker &checker)
{
    constexpr std::size_t bundlesWorthAThread = 4; // whose scripts take as long as a parser of one's own
    std::vector<Problems> problems(std::size_t(paths.size()));
    std::atomic<qsizetype> next = 0;
    runInParallel(threadsFor(problems.size(), bundlesWorthAThread), [&](std::size_t) {
        for (auto index = next++; index < paths.size(); index = next++)
            problems[std::size_t(index)] = validateBundle(paths[index], checker);
    });
    return problems;
}
