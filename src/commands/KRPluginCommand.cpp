#include "commands/KRPluginCommand.h"

#include "commands/CommandEntry.h"
#include "commands/CommandShortcut.h"
#include "commands/CoreModules.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"

namespace {

std::shared_ptr<KRPluginScript> cachedScript(const QByteArray &path, KRPluginCommand::ScriptCache &scripts)
{
    const auto key = path.toLower();
    if (const auto found = scripts.find(key); found != scripts.end())
        return found->second;
    KRError error;
    auto script = KRPluginScript::initWithPath(path, &error);
    if (script) {
        scripts.emplace(key, script);
        return script;
    }
    LTAppEnvironment::current().systemLog(QStringLiteral("Failed to load script at URL %1, error: %2")
            .arg(absoluteString(fileURLFromPath(path, FileKind::File)), error.localizedDescription));
    return nullptr;
}

QString defaultName(const QString &scriptPath)
{
    return withoutExtension(scriptPath.mid(scriptPath.lastIndexOf(u'/') + 1));
}

} // namespace

std::shared_ptr<KRPluginCommand> KRPluginCommand::commandWithJSON(
    const QVariant &entry, ScriptCache &scripts, const QUrl &scriptsURL)
{
    const auto read = CommandEntry::fromVariant(entry);
    return read ? commandWithEntry(*read, scripts, pathFromFileURL(scriptsURL), coreModulesOfApplication()) : nullptr;
}

std::shared_ptr<KRPluginCommand> KRPluginCommand::commandWithEntry(const CommandEntry &entry, ScriptCache &scripts,
    const QByteArray &scriptsFolder, const COScript::CoreModules &coreModules)
{
    if (!entry.script)
        return nullptr;
    auto script = cachedScript(pathByAppending(scriptsFolder, entry.script->toUtf8()), scripts);
    if (!script)
        return nullptr;
    const auto name = entry.name ? *entry.name : defaultName(*entry.script);
    return std::make_shared<KRPluginCommand>(std::move(script), entry.identifier ? *entry.identifier : name.toLower(),
        name, flattenedHandlers(handlersOfEntry(entry)), entry.shortcut,
        entry.scope == KRPluginCommandScopeApplicationValue ? Scope::Application : Scope::Document, coreModules);
}

KRPluginCommand::KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
    const std::optional<QString> &name, const OrderedVariantDictionary &handlers,
    const std::optional<QString> &shortcut, Scope scope)
    : KRPluginCommand(std::move(script), identifier, name, flattenedHandlers(handlers), shortcut, scope,
        coreModulesOfApplication())
{
}

KRPluginCommand::KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
    const std::optional<QString> &name, const QString &runHandler, Scope scope)
    : KRPluginCommand(std::move(script), identifier, name,
        OrderedVariantDictionary {{KRPluginCommandRunHandlerKey, runHandler}}, std::nullopt, scope)
{
}

KRPluginCommand::KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
    const std::optional<QString> &name, HandlerIndex flattenedHandlerIndex, const std::optional<QString> &shortcut,
    Scope scope, const COScript::CoreModules &coreModules)
    : m_identifier(identifier)
    , m_script(std::move(script))
    , m_name(name)
    , m_handlers(std::move(flattenedHandlerIndex))
    , m_shortcut(shortcut)
    , m_scope(scope)
    , m_coreModuleMap(coreModules)
{
}

KRPluginCommand::~KRPluginCommand() = default;

HandlerIndex KRPluginCommand::flattenedHandlerIndexWithHandlers(const OrderedVariantDictionary &handlers)
{
    return flattenedHandlers(handlers);
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
    return m_handlers.contains(KRPluginCommandRunHandlerKey);
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
        m_commandSpecifier.emplace(bundle ? bundle->identifier() : std::nullopt, m_identifier);
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
    metadata.insert({KRPluginCommandHandlersKey, QVariant::fromValue(m_handlers)});
    add(KRPluginCommandShortcutKey, m_shortcut);
    if (m_script)
        metadata.insert({KRPluginCommandScriptPathKey, m_script->filename()});
    if (m_scope == Scope::Application)
        metadata.insert({KRPluginCommandScopeKey, KRPluginCommandScopeApplicationValue});
    return metadata;
}
