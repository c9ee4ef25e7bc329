#include "commands/KRPluginCommand.h"

#include "commands/CommandEntry.h"
#include "commands/CommandShortcut.h"
#include "commands/CoreModules.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"

namespace {

std::shared_ptr<KRPluginScript> cachedScript(const QString &relativePath, CommandLoading &loading)
{
    auto key = relativePath.toLower();
    if (!loading.cacheKeyPrefix.isEmpty())
        key.prepend(loading.cacheKeyPrefix);
    if (const auto known = loading.scripts.find(key); known != loading.scripts.end())
        return known->second;
    KRError error;
    const auto path = pathByAppending(loading.scriptsFolder, relativePath.toUtf8());
    auto script = KRPluginScript::initWithPath(path, &error);
    if (script) {
        loading.scripts.emplace(std::move(key), script);
    } else {
        loading.messages.add(LogMessages::Recipient::SystemLog,
            QStringLiteral("Failed to load script at URL %1, error: %2")
                .arg(absoluteString(fileURLFromPath(path, FileKind::File)), error.localizedDescription));
    }
    return script;
}

QString defaultName(const QString &scriptPath)
{
    return withoutExtension(scriptPath.mid(scriptPath.lastIndexOf(u'/') + 1));
}

} // namespace

std::shared_ptr<KRPluginCommand> KRPluginCommand::commandWithJSON(
    const QVariant &entry, ScriptCache &scripts, const QUrl &scriptsURL)
{
    auto read = CommandEntry::fromVariant(entry);
    if (!read)
        return nullptr;
    const auto coreModules = coreModulesOfApplication();
    LogMessages messages;
    const auto folder = pathFromFileURL(scriptsURL);
    CommandLoading loading{folder, coreModules, scripts, messages, displayPath(folder).toLower() + u'/'};
    auto command = commandWithEntry(std::move(*read), loading);
    for (const auto &message : messages.messages())
        LTAppEnvironment::current().systemLog(message.text);
    return command;
}

std::shared_ptr<KRPluginCommand> KRPluginCommand::commandWithEntry(CommandEntry entry, CommandLoading &loading)
{
    if (!entry.script)
        return nullptr;
    auto script = cachedScript(*entry.script, loading);
    if (!script)
        return nullptr;
    auto handlers = handlersOfEntry(entry);
    auto name = entry.name ? std::move(*entry.name) : defaultName(*entry.script);
    auto identifier = entry.identifier ? std::move(*entry.identifier) : name.toLower();
    const auto scope = entry.scope == KRPluginCommandScopeApplicationValue ? Scope::Application : Scope::Document;
    return std::make_shared<KRPluginCommand>(std::move(script), std::move(identifier), std::move(name),
        std::move(handlers), std::move(entry.shortcut), scope, loading.coreModules);
}

KRPluginCommand::KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
    const std::optional<QString> &name, const OrderedVariantDictionary &handlers,
    const std::optional<QString> &shortcut, Scope scope)
    : KRPluginCommand(std::move(script), identifier, name,
        std::make_shared<const HandlerIndex>(flattenedHandlerIndexWithHandlers(handlers)), shortcut, scope,
        coreModulesOfApplication())
{ }

KRPluginCommand::KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
    const std::optional<QString> &name, const QString &runHandler, Scope scope)
    : KRPluginCommand(std::move(script), identifier, name,
        OrderedVariantDictionary{{KRPluginCommandRunHandlerKey, runHandler}}, std::nullopt, scope)
{ }

KRPluginCommand::KRPluginCommand(std::shared_ptr<KRPluginScript> script, std::optional<QString> identifier,
    std::optional<QString> name, std::shared_ptr<const HandlerIndex> handlers, std::optional<QString> shortcut,
    Scope scope, const COScript::CoreModules &coreModules)
    : m_identifier(std::move(identifier))
    , m_script(std::move(script))
    , m_name(std::move(name))
    , m_handlers(std::move(handlers))
    , m_shortcut(std::move(shortcut))
    , m_scope(scope)
    , m_coreModuleMap(coreModules)
{ }

KRPluginCommand::~KRPluginCommand() = default;

HandlerIndex KRPluginCommand::flattenedHandlerIndexWithHandlers(const OrderedVariantDictionary &handlers)
{
    return flattenedHandlers(HandlerTable::fromDictionary(handlers));
}

QStringList KRPluginCommand::actionIDsNotToReload()
{
    return {QStringLiteral("Startup"), QStringLiteral("Shutdown")};
}

QString KRPluginCommand::shortcutKey() const
{
    return m_shortcut ? keyOfShortcut(*m_shortcut) : QString();
}

unsigned KRPluginCommand::shortcutModifiers() const
{
    return m_shortcut ? modifiersOfShortcut(*m_shortcut) : 0;
}

bool KRPluginCommand::hasRunHandler() const
{
    return m_handlers->contains(KRPluginCommandRunHandlerKey);
}

MenuItem KRPluginCommand::menuItemWithAction(const MenuAction &action) const
{
    MenuItem item;
    item.title = m_name.value_or(QString());
    item.action = action;
    item.keyEquivalent = shortcutKey();
    item.keyEquivalentModifierMask = shortcutModifiers();
    return item;
}

const KRPluginCommandSpecifier &KRPluginCommand::commandSpecifier() const
{
    if (!m_commandSpecifier) {
        const auto bundle = pluginBundle();
        m_commandSpecifier =
            std::make_unique<KRPluginCommandSpecifier>(bundle ? bundle->identifier() : std::nullopt, m_identifier);
    }
    return *m_commandSpecifier;
}

OrderedVariantDictionary KRPluginCommand::metadata() const
{
    OrderedVariantDictionary metadata;
    const auto add = [&metadata](const QString &key, const std::optional<QString> &value) {
        if (value)
            metadata.insert({key, *value});
    };
    add(KRPluginCommandIdentifierKey, m_identifier);
    add(KRPluginCommandNameKey, m_name);
    metadata.insert({KRPluginCommandHandlersKey, QVariant::fromValue(*m_handlers)});
    add(KRPluginCommandShortcutKey, m_shortcut);
    if (m_script)
        metadata.insert({KRPluginCommandScriptPathKey, m_script->filename()});
    if (m_scope == Scope::Application)
        metadata.insert({KRPluginCommandScopeKey, KRPluginCommandScopeApplicationValue});
    return metadata;
}
