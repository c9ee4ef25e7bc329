#include "commands/CoreModules.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

#include <vector>

namespace {

struct Module
{
    QString name;
    QString resource;
};

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
            result.push_back({text, QStringLiteral("core-modules/@krpm/%1/index").arg(text)});
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

QStringList namesOfCoreModules()
{
    QStringList names;
    for (const auto &module : modules())
        names.append(module.name);
    return names;
}
