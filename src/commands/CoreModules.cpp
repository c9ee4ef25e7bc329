#include "commands/CoreModules.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

#include <QHash>

#include <vector>

namespace {

struct Module
{
    QString name;
    QString resource;
};

QString resourceOfPackage(const QString &name)
{
    return QStringLiteral("core-modules/@krpm/%1/index").arg(name);
}

const std::vector<Module> &modules()
{
    static const std::vector<Module> all = [] {
        std::vector<Module> result{
            {QStringLiteral("korvan"), QStringLiteral("KorvanAPI")},
            {QStringLiteral("korvan/async"), QStringLiteral("KorvanAPI_async")},
            {QStringLiteral("korvan/data-supplier"), QStringLiteral("KorvanAPI_data-supplier")},
            {QStringLiteral("korvan/dom"), QStringLiteral("KorvanAPI_dom")},
            {QStringLiteral("korvan/settings"), QStringLiteral("KorvanAPI_settings")},
            {QStringLiteral("korvan/ui"), QStringLiteral("KorvanAPI_ui")},
        };
        const char *const nodeModules[] = {"buffer", "console", "events", "os", "path", "process", "querystring",
            "stream", "string_decoder", "timers", "util"};
        for (const char *const name : nodeModules) {
            const auto text = QString::fromLatin1(name);
            result.push_back({text, resourceOfPackage(text)});
        }
        return result;
    }();
    return all;
}

COScript::CoreModules modulesInFolder(const QByteArray &folder)
{
    COScript::CoreModules map;
    for (const auto &module : modules()) {
        const auto file = pathByAppending(folder, (module.resource + QStringLiteral(".js")).toUtf8());
        map.insert(module.name, fileURLFromPath(file, FileKind::File));
    }
    return map;
}

COScript::CoreModules modulesInResources()
{
    const auto &environment = LTAppEnvironment::current();
    COScript::CoreModules map;
    for (const auto &module : modules()) {
        const auto url = environment.urlForResource(module.resource, QStringLiteral("js"));
        if (!url.isEmpty())
            map.insert(module.name, url);
    }
    return map;
}

/// The package behind a global; null when there is none.
const char *packageOfGlobal(const QString &name)
{
    static const QHash<QString, const char *> packages{
        {QStringLiteral("AbortController"), "event-target"},
        {QStringLiteral("AbortSignal"), "event-target"},
        {QStringLiteral("Blob"), "fetch"},
        {QStringLiteral("Buffer"), "buffer"},
        {QStringLiteral("DOMException"), "event-target"},
        {QStringLiteral("Event"), "event-target"},
        {QStringLiteral("EventTarget"), "event-target"},
        {QStringLiteral("Headers"), "fetch"},
        {QStringLiteral("Request"), "fetch"},
        {QStringLiteral("Response"), "fetch"},
        {QStringLiteral("TextDecoder"), "text-encoding"},
        {QStringLiteral("TextEncoder"), "text-encoding"},
        {QStringLiteral("URL"), "url"},
        {QStringLiteral("URLSearchParams"), "url"},
        {QStringLiteral("atob"), "base64"},
        {QStringLiteral("btoa"), "base64"},
        {QStringLiteral("fetch"), "fetch"},
        {QStringLiteral("performance"), "performance"},
        {QStringLiteral("process"), "process"},
        {QStringLiteral("structuredClone"), "structured-clone"},
    };
    return packages.value(name);
}

} // namespace

COScript::CoreModules coreModulesOfApplication()
{
    const auto location = LTAppEnvironment::current().userDefaults().value(KRPluginCommandAPILocationKey);
    const auto path = location.toString().toUtf8();
    if (path.isEmpty())
        return modulesInResources();
    if (kindOfTarget(path) == FolderEntry::Kind::Folder)
        return modulesInFolder(path);
    // A single file implements the module "korvan" only; the others stay where they are.
    auto map = modulesInResources();
    map.insert(QStringLiteral("korvan"), fileURLFromPath(path, FileKind::File));
    return map;
}

ScriptGlobal coreModuleOfGlobal(const QString &name, const COScript::CoreModules &modules)
{
    const auto package = QString::fromLatin1(packageOfGlobal(name));
    if (package.isEmpty())
        return {};
    const auto mapped = modules.constFind(package);
    if (mapped != modules.constEnd())
        return {*mapped, package == name ? QString() : name}; // a module that is the global
    return {LTAppEnvironment::current().urlForResource(resourceOfPackage(package), QStringLiteral("js")), name};
}
