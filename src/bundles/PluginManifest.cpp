#include "bundles/PluginManifest.h"

#include <array>
#include <string_view>

namespace {

/// A reader for each key: bytes to field, without looking at any other key.
template<class Target>
struct Field
{
    std::string_view key;
    void (*read)(Target &target, JSONView value);
};

template<class Target, std::size_t count>
void readFields(Target &target, JSONView object, const std::array<Field<Target>, count> &fields)
{
    object.forEachMember([&](std::string_view key, JSONView value) {
        for (const auto &field : fields) {
            if (field.key == key)
                return field.read(target, value);
        }
    });
}

QUrl urlOf(JSONView value)
{
    const auto text = value.string();
    return text ? QUrl(*text) : QUrl();
}

std::optional<QString> versionOf(JSONView value)
{
    auto text = value.string();
    return text ? text : value.numberText();
}

constexpr std::array<Field<CommandEntry>, 7> commandFields {{
    {"script", [](CommandEntry &entry, JSONView value) { entry.script = value.string(); }},
    {"name", [](CommandEntry &entry, JSONView value) { entry.name = value.string(); }},
    {"identifier", [](CommandEntry &entry, JSONView value) { entry.identifier = value.string(); }},
    {"handlers",
        [](CommandEntry &entry, JSONView value) {
            entry.handlers.reset();
            if (value.isObject())
                entry.handlers = value.toOrderedDictionary();
        }},
    {"handler", [](CommandEntry &entry, JSONView value) { entry.handler = value.string(); }},
    {"shortcut", [](CommandEntry &entry, JSONView value) { entry.shortcut = value.string(); }},
    {"scope", [](CommandEntry &entry, JSONView value) { entry.scope = value.string(); }},
}};

void readCommands(PluginManifest &manifest, JSONView value)
{
    manifest.commands.clear();
    value.forEachElement([&](JSONView element) {
        if (!element.isObject())
            return;
        CommandEntry entry;
        readFields(entry, element, commandFields);
        manifest.commands.push_back(std::move(entry));
    });
}

void readMenu(PluginManifest &manifest, JSONView value)
{
    manifest.menu.reset();
    if (value.isObject())
        manifest.menu = value.toVariant().toMap();
}

constexpr std::array<Field<PluginManifest>, 15> manifestFields {{
    {"author", [](PluginManifest &manifest, JSONView value) { manifest.author = value.string(); }},
    {"authorEmail", [](PluginManifest &manifest, JSONView value) { manifest.authorEmail = value.string(); }},
    {"name", [](PluginManifest &manifest, JSONView value) { manifest.name = value.string(); }},
    {"identifier", [](PluginManifest &manifest, JSONView value) { manifest.identifier = value.string(); }},
    {"description", [](PluginManifest &manifest, JSONView value) { manifest.pluginDescription = value.string(); }},
    {"suppliesData",
        [](PluginManifest &manifest, JSONView value) { manifest.suppliesData = value.boolean().value_or(false); }},
    {"version", [](PluginManifest &manifest, JSONView value) { manifest.version = versionOf(value); }},
    {"compatibleVersion",
        [](PluginManifest &manifest, JSONView value) { manifest.compatibleVersion = value.string(); }},
    {"maxCompatibleVersion",
        [](PluginManifest &manifest, JSONView value) { manifest.maximumCompatibleVersion = value.string(); }},
    {"homepage", [](PluginManifest &manifest, JSONView value) { manifest.homepageURL = urlOf(value); }},
    {"appcast", [](PluginManifest &manifest, JSONView value) { manifest.updatingInfoURL = urlOf(value); }},
    {"commands", readCommands},
    {"menu", readMenu},
    {"disableCocoaScriptPreprocessor",
        [](PluginManifest &manifest, JSONView value) {
            manifest.disableCocoaScriptPreprocessor = value.boolean().value_or(false);
        }},
    {"icon", [](PluginManifest &manifest, JSONView value) { manifest.icon = value.string(); }},
}};

} // namespace

Result<PluginManifest> parsePluginManifest(const QByteArray &text, JSONParser &parser)
{
    const auto root = parser.parse(text);
    if (!root)
        return root.error();
    if (root.value().isArray())
        return KRError {QStringLiteral("json"), 0, QStringLiteral("(null)")};
    if (!root.value().isObject()) {
        return KRError {QStringLiteral("json"), 0, QStringLiteral("The top level is neither an object nor an array.")};
    }
    PluginManifest manifest;
    readFields(manifest, root.value(), manifestFields);
    return manifest;
}
