#include "bundles/PluginManifest.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/script/ValueText.h"

#include <array>
#include <string_view>

namespace {

/// A reader for each key: bytes to field, without looking at any other key.
template <class Target>
struct Field
{
    std::string_view key;
    void (*read)(Target &target, JSONView value);
};

template <class Target, std::size_t count>
void readFields(Target &target, JSONView object, const std::array<Field<Target>, count> &fields)
{
    object.forEachMember([&](std::string_view key, JSONView value) {
        for (const auto &field : fields) {
            if (field.key == key)
                return field.read(target, value);
        }
    });
}

std::optional<QString> versionOf(JSONView value)
{
    auto text = value.string();
    return text ? text : value.numberText();
}

/// A text, or one of the few that nearly every table of handlers holds, which all of them then share.
QString handlerText(std::string_view text)
{
    static const std::array<std::pair<std::string_view, QString>, 6> usual{{
        {"run", KRPluginCommandRunHandlerKey},
        {"onRun", QStringLiteral("onRun")},
        {"setUp", KRPluginCommandSetUpHandlerKey},
        {"onSetUp", QStringLiteral("onSetUp")},
        {"tearDown", KRPluginCommandTearDownHandlerKey},
        {"onTearDown", QStringLiteral("onTearDown")},
    }};
    for (const auto &[utf8, shared] : usual) {
        if (utf8 == text)
            return shared;
    }
    return textFromUTF8(text);
}

QString functionName(JSONView value)
{
    const auto text = value.utf8();
    return text ? handlerText(*text) : descriptionOfValue(value.toVariant());
}

HandlerTable::Handlers handlersOf(JSONView value)
{
    HandlerTable::Handlers handlers;
    value.forEachMember([&](std::string_view key, JSONView function) {
        handlers.emplace_back(handlerText(key), functionName(function));
    });
    return handlers;
}

HandlerTable handlerTableOf(JSONView value)
{
    HandlerTable table;
    value.forEachMember([&](std::string_view key, JSONView member) {
        if (key == "actions")
            table.actions = handlersOf(member);
        else
            table.handlers.emplace_back(handlerText(key), functionName(member));
    });
    return table;
}

constexpr std::array<Field<CommandEntry>, 7> commandFields{{
    {"script", [](CommandEntry &entry, JSONView value) { entry.script = value.string(); }},
    {"name", [](CommandEntry &entry, JSONView value) { entry.name = value.string(); }},
    {"identifier", [](CommandEntry &entry, JSONView value) { entry.identifier = value.string(); }},
    {"handlers",
        [](CommandEntry &entry, JSONView value) {
            entry.handlers.reset();
            if (value.isObject())
                entry.handlers = handlerTableOf(value);
        }},
    {"handler", [](CommandEntry &entry, JSONView value) { entry.handler = value.string(); }},
    {"shortcut", [](CommandEntry &entry, JSONView value) { entry.shortcut = value.string(); }},
    {"scope", [](CommandEntry &entry, JSONView value) { entry.scope = value.string(); }},
}};

void readCommands(PluginManifest &manifest, JSONView value)
{
    manifest.commands.clear();
    manifest.commands.reserve(value.elementCount());
    value.forEachElement([&](JSONView element) {
        if (!element.isObject())
            return;
        CommandEntry entry;
        readFields(entry, element, commandFields);
        manifest.commands.push_back(std::move(entry));
    });
}

constexpr std::array<Field<PluginManifest>, 7> manifestFields{{
    {"name", [](PluginManifest &manifest, JSONView value) { manifest.name = value.string(); }},
    {"identifier", [](PluginManifest &manifest, JSONView value) { manifest.identifier = value.string(); }},
    {"suppliesData",
        [](PluginManifest &manifest, JSONView value) { manifest.suppliesData = value.boolean().value_or(false); }},
    {"version", [](PluginManifest &manifest, JSONView value) { manifest.version = versionOf(value); }},
    {"commands", readCommands},
    {"disableCocoaScriptPreprocessor",
        [](PluginManifest &manifest, JSONView value) {
            manifest.disableCocoaScriptPreprocessor = value.boolean().value_or(false);
        }},
    {"icon", [](PluginManifest &manifest, JSONView value) { manifest.icon = value.string(); }},
}};

QUrl urlOf(JSONView value)
{
    const QUrl url(value.string().value_or(QString()));
    return url.isValid() ? url : QUrl();
}

void readMenu(PluginDetails &details, JSONView value)
{
    details.menu = value.isObject() ? std::optional(value.toVariant().toMap()) : std::nullopt;
}

constexpr std::array<Field<PluginDetails>, 8> detailFields{{
    {"author", [](PluginDetails &details, JSONView value) { details.author = value.string(); }},
    {"authorEmail", [](PluginDetails &details, JSONView value) { details.authorEmail = value.string(); }},
    {"description", [](PluginDetails &details, JSONView value) { details.pluginDescription = value.string(); }},
    {"compatibleVersion", [](PluginDetails &details, JSONView value) { details.compatibleVersion = value.string(); }},
    {"maxCompatibleVersion",
        [](PluginDetails &details, JSONView value) { details.maximumCompatibleVersion = value.string(); }},
    {"homepage", [](PluginDetails &details, JSONView value) { details.homepageURL = urlOf(value); }},
    {"appcast", [](PluginDetails &details, JSONView value) { details.updatingInfoURL = urlOf(value); }},
    {"menu", readMenu},
}};

} // namespace

Result<PluginManifest> parsePluginManifest(const QByteArray &text, JSONParser &parser)
{
    const auto root = parser.parse(text);
    if (!root)
        return root.error();
    if (root.value().isArray())
        return KRError{QStringLiteral("json"), 0, QStringLiteral("(null)")};
    if (!root.value().isObject()) {
        return KRError{QStringLiteral("json"), 0, QStringLiteral("The top level is neither an object nor an array.")};
    }
    PluginManifest manifest;
    readFields(manifest, root.value(), manifestFields);
    return manifest;
}

PluginDetails parsePluginDetails(const QByteArray &text)
{
    JSONParser parser;
    PluginDetails details;
    if (const auto root = parser.parse(text))
        readFields(details, root.value(), detailFields);
    return details;
}
