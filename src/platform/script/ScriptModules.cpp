#include "platform/script/ScriptModules.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/UTF8.h"
#include "platform/script/ContainedPath.h"

namespace {

KRError moduleError(const QString &message)
{
    return {QStringLiteral("require"), 0, message};
}

QByteArray existingFile(const QByteArray &path)
{
    const QByteArray candidates[] = {path, path + ".js", path + ".json", pathByAppending(path, "index.js")};
    for (const auto &candidate : candidates) {
        if (kindOfTarget(candidate) == FolderEntry::Kind::File)
            return candidate;
    }
    return {};
}

bool isRelative(const QString &name)
{
    return name == u"." || name == u".." || name.startsWith(u"./") || name.startsWith(u"../");
}

} // namespace

ScriptModules::ScriptModules(const ScriptCoreModules &coreModules)
    : m_coreModules(coreModules)
{ }

void ScriptModules::setMainScript(const QByteArray &scriptPath, const QByteArray &folder)
{
    m_mainScript = {scriptPath, folder, false};
}

Result<QString> ScriptModules::resolve(const QString &name, const QString &requirer)
{
    const auto coreName = name.startsWith(u"node:") ? name.mid(5) : name;
    if (const auto core = m_coreModules.constFind(coreName); core != m_coreModules.constEnd())
        return addCoreModule(*core);
    const auto place = find(name, requirer.isEmpty() ? m_mainScript : m_places.value(requirer));
    if (!place)
        return place.error();
    return add(place.value());
}

Result<ScriptModules::Place> ScriptModules::find(const QString &name, const Place &requirer) const
{
    const bool isAbsolute = name.startsWith(u'/');
    if (!isRelative(name) && !isAbsolute) {
        const auto known = m_coreModules.isEmpty()
            ? QString()
            : QStringLiteral(" Modules of the application are: %1.")
                  .arg(QStringList(m_coreModules.keys()).join(QStringLiteral(", ")));
        return moduleError(
            QStringLiteral("Cannot find module '%1'. Files of the plug-in are required as './%1'.").arg(name) + known);
    }
    const auto base = isAbsolute ? QByteArray("/") : pathWithoutLastComponent(requirer.path);
    const auto wanted = normalizedPath(pathByAppending(base, name.toUtf8()));
    const auto outside = moduleError(QStringLiteral("Module '%1' lies outside of the plug-in.").arg(name));
    if (!isContainedPath(wanted, requirer.folder) && wanted != requirer.folder)
        return outside;
    const auto file = existingFile(wanted);
    if (file.isEmpty())
        return moduleError(QStringLiteral("Cannot find module '%1'.").arg(name));
    const auto resolved = resolvedPath(file);
    const auto resolvedFolder = resolvedPath(requirer.folder);
    if (!isContainedPath(resolved, resolvedFolder))
        return outside;
    return Place{resolved, resolvedFolder, requirer.isCore};
}

QString ScriptModules::addCoreModule(const QUrl &url)
{
    const auto path = pathFromFileURL(url);
    return add({path, pathWithoutLastComponent(path), true});
}

QString ScriptModules::add(const Place &place)
{
    const auto file = displayPath(place.path);
    m_places.insert(file, place);
    return file;
}

Result<QString> ScriptModules::text(const QString &file) const
{
    const auto bytes = readFile(m_places.value(file).path, largestTextFile);
    if (!bytes)
        return moduleError(
            QStringLiteral("Cannot read module '%1': %2.").arg(file, bytes.error().localizedDescription));
    if (!isValidUTF8(bytes.value()))
        return moduleError(QStringLiteral("Cannot read module '%1': the file is not UTF-8.").arg(file));
    auto text = QString::fromUtf8(bytes.value());
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

QUrl ScriptModules::url(const QString &file) const
{
    return fileURLFromPath(m_places.value(file).path, FileKind::File);
}
