#include "bundles/BundleFiles.h"

#include "platform/JSONText.h"
#include "platform/JSONValidity.h"
#include "platform/ObjectText.h"

namespace {

const auto manifestName = QStringLiteral("manifest.json");

FileWrapper scriptFolder(const QByteArray &manifest, const CommandTable &commands)
{
    auto folder = FileWrapper::folder(QStringLiteral("Korvan"));
    folder.addFileWrapper(FileWrapper::regularFile(manifestName, manifest));
    for (const auto &entry : commands) {
        // A name that is there already stays what it is: most commands share their script with others, and no script
        // may take the manifest's place.
        if (const auto &script = entry.second->script())
            folder.addFileWrapper(FileWrapper::regularFile(script->filename(), script->scriptBytes()));
    }
    return folder;
}

FileWrapper resourceFolder(std::optional<FileWrapper> icon)
{
    auto folder = FileWrapper::folder(QStringLiteral("Resources"));
    if (icon)
        folder.addFileWrapper(std::move(*icon));
    return folder;
}

} // namespace

Result<QByteArray> manifestText(const OrderedVariantDictionary &metadata)
{
    const auto value = QVariant::fromValue(metadata);
    if (!isValidJSONValue(value))
        return KRError{QStringLiteral("json"), 0, QStringLiteral("It holds a value that JSON has no notation for.")};
    return jsonFromVariant(value, JSONStyle::Indented);
}

FileWrapper pluginFileWrapper(const std::optional<QString> &name, const QByteArray &manifest,
    const CommandTable &commands, std::optional<FileWrapper> icon)
{
    auto contents = FileWrapper::folder(QStringLiteral("Contents"));
    contents.addFileWrapper(scriptFolder(manifest, commands));
    contents.addFileWrapper(resourceFolder(std::move(icon)));
    auto plugin = FileWrapper::folder(textOrNull(name) + QStringLiteral(".korvanplugin"));
    plugin.addFileWrapper(std::move(contents));
    return plugin;
}
