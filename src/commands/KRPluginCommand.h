#pragma once

#include "commands/CommandHandlers.h"
#include "commands/CommandLoading.h"
#include "commands/KRPluginCommandBundle.h"
#include "commands/KRPluginCommandKeys.h"
#include "commands/KRPluginCommandManager.h"
#include "commands/KRPluginCommandSpecifier.h"
#include "commands/KRPluginScript.h"
#include "commands/UserInfoOwner.h"
#include "platform/Export.h"
#include "platform/MenuItem.h"
#include "platform/script/COScript.h"
#include "platform/script/ScriptDictionary.h"
#include "platform/script/ScriptHost.h"
#include "platform/script/ScriptObject.h"

#include <QPointer>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <memory>
#include <optional>

/// One command of a plug-in: what its manifest says of it, and the runs of its script. Held by shared pointers. Main
/// thread only.
///
/// As data it does not change once made. A run makes a script session, calls the handler in it and tears it down, or
/// leaves it to the manager while the script has something pending.
class KORVAN_EXPORT KRPluginCommand final : public ScriptObject, public COPrintController, public ScriptHosting
{
public:
    enum class Scope { Document = 0, Application = 1 };

    using Completion = KRPluginCommandManager::Completion;

    /// `commandWithJSON:scripts:scriptsURL:`. From an element of the manifest's "commands". Null when it is no
    /// dictionary, names no script, or the script cannot be read (that is said in the system log).
    static std::shared_ptr<KRPluginCommand> commandWithJSON(
        const QVariant &entry, ScriptCache &scripts, const QUrl &scriptsURL);
    /// The same from an entry that was read already. Any thread, as long as one only holds the command.
    static std::shared_ptr<KRPluginCommand> commandWithEntry(CommandEntry entry, CommandLoading &loading);

    /// `initWithScript:identifier:name:handlers:shortcut:scope:`. Any of them may be nil. The handlers are flattened.
    KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
        const std::optional<QString> &name, const OrderedVariantDictionary &handlers,
        const std::optional<QString> &shortcut, Scope scope);
    /// `initWithScript:identifier:name:runHandler:scope:`. Only the handler "run", no shortcut.
    KRPluginCommand(std::shared_ptr<KRPluginScript> script, const std::optional<QString> &identifier,
        const std::optional<QString> &name, const QString &runHandler, Scope scope);
    /// With handlers that are flat and core modules that were found before.
    KRPluginCommand(std::shared_ptr<KRPluginScript> script, std::optional<QString> identifier,
        std::optional<QString> name, std::shared_ptr<const HandlerIndex> handlers, std::optional<QString> shortcut,
        Scope scope, const COScript::CoreModules &coreModules);
    ~KRPluginCommand() override;

    static HandlerIndex flattenedHandlerIndexWithHandlers(const OrderedVariantDictionary &handlers);
    /// "Startup" and "Shutdown": the keys whose runs never reload the script.
    static QStringList actionIDsNotToReload();

    // What the manifest says

    const std::optional<QString> &identifier() const { return m_identifier; }
    const std::shared_ptr<KRPluginScript> &script() const { return m_script; }
    const std::optional<QString> &name() const { return m_name; }
    /// Handler key to function name, actions laid out.
    const HandlerIndex &handlers() const { return *m_handlers; }
    /// As written; nil when there is none.
    const std::optional<QString> &shortcut() const { return m_shortcut; }
    /// "" without a shortcut.
    QString shortcutKey() const;
    /// A mask of ModifierFlag bits.
    unsigned shortcutModifiers() const;
    Scope scope() const { return m_scope; }
    bool hasRunHandler() const;
    bool canAppearInMenuBar() const { return hasRunHandler(); }
    /// A new item with the command's name and shortcut.
    MenuItem menuItemWithAction(const MenuAction &action) const;
    /// Made on first request from the plug-in's identifier at that moment, then kept.
    const KRPluginCommandSpecifier &commandSpecifier() const;
    /// The entry as it would be written to a manifest, keys in the manifest's usual order.
    OrderedVariantDictionary metadata() const;

    /// Null when the plug-in is gone or was never set.
    std::shared_ptr<KRPluginCommandBundle> pluginBundle() const { return m_pluginBundle.lock(); }
    void setPluginBundle(const std::shared_ptr<KRPluginCommandBundle> &bundle) { m_pluginBundle = bundle; }
    bool disableCocoaScriptPreprocessor() const { return m_disableCocoaScriptPreprocessor; }
    void setDisableCocoaScriptPreprocessor(bool disable) { m_disableCocoaScriptPreprocessor = disable; }
    const COScript::CoreModules &coreModuleMap() const { return m_coreModuleMap; }
    void setCoreModuleMap(const COScript::CoreModules &modules) { m_coreModuleMap = modules; }

    // Runs. The six entry points answer the command's log; nil when there was no running command. `context` is copied.
    // The completion, which may be null, is called once the command has finished, never for a command without a script.

    std::optional<QString> run(const QVariantMap &context, KRPluginCommandManager *manager);
    std::optional<QString> run(
        const QVariantMap &context, KRPluginCommandManager *manager, const Completion &onComplete);
    std::optional<QString> runHandlerWithKey(
        const QString &key, const QVariantMap &context, KRPluginCommandManager *manager);
    std::optional<QString> runHandlerWithKey(
        const QString &key, const QVariantMap &context, KRPluginCommandManager *manager, const Completion &onComplete);
    std::optional<QString> runHandler(
        const QString &function, const QVariantMap &context, KRPluginCommandManager *manager);
    std::optional<QString> runHandler(const QString &function, const QVariantMap &context,
        KRPluginCommandManager *manager, const Completion &onComplete);
    /// The central run. `function` is the handler's function name, nil when the command has no handler of that key.
    std::optional<QString> runHandler(const std::optional<QString> &function, const QString &withOptionalKey,
        const QVariantMap &context, KRPluginCommandManager *manager, const Completion &onComplete);

    // The steps of a run

    void newSessionForURL(const QUrl &url, bool shouldReload);
    void setUpSessionWithContext(const ScriptDictionaryPointer &context);
    void tearDownSession();
    bool tearDownIfFinished();
    ScriptDictionaryPointer fullContextFromContext(const QVariantMap &context, const QUrl &url);
    void loadJSGlobals();
    QVariant executeScript(const std::optional<QString> &source);
    bool shouldReloadWithActionID(const QString &actionID) const;
    /// Empties the dictionary that scripts and hosts may hold, lets go of it and of the session, and calls nothing: for
    /// an owner that goes away with the command still running.
    void abandonSession();

    // The state of the current or latest run

    /// Whether there is nothing of a run yet: no session, no context, no log.
    bool hasNeverRun() const { return !m_run; }
    /// Null between runs.
    std::shared_ptr<COScript> session() const { return m_run ? m_run->session : nullptr; }
    /// Ends the session held so far.
    void setSession(const std::shared_ptr<COScript> &session);
    bool stayRunning() const;
    /// Asks the session to be kept. The getter tells more: whether anything at all keeps it.
    void setStayRunning(bool stayRunning);
    /// The full context of the current run; null between runs. It keeps the plug-in in memory.
    ScriptDictionaryPointer context() const { return m_run ? m_run->context : nullptr; }
    void setContext(const ScriptDictionaryPointer &context);
    /// What the last handler has returned, commands and plug-ins in it weakly; nil when it threw.
    QVariant returnValue() const { return m_run ? m_run->returnValue : QVariant(); }
    void setReturnValue(const QVariant &value);
    /// The source last handed to a session.
    std::optional<QString> executingScript() const { return m_run ? m_run->executingScript : std::nullopt; }
    void setExecutingScript(const std::optional<QString> &source) { runState().executingScript = source; }
    /// Whether the script of the current or latest session has raised an exception.
    bool errorInScript() const { return m_run && m_run->errorInScript; }
    void setErrorInScript(bool error) { runState().errorInScript = error; }
    /// The manager that last ran the command; null when it is gone.
    KRPluginCommandManager *manager() const { return m_run ? m_run->manager.data() : nullptr; }
    void setManager(KRPluginCommandManager *manager) { runState().manager = manager; }

    // Logging

    void print(const QVariant &value) override;
    void scriptEncounteredException(const ScriptException &exception) override;
    void error(const QVariant &value);
    /// A ready-made entry (a dictionary with "stringValue", "level" and "payload") passes as it is.
    void log(const QVariant &value, const QString &atLevel);
    /// The log since the beginning of the latest run.
    QString logString() const;
    /// Entries kept while the manager has no log action.
    QVariantList logsWhenRunViaTests() const { return m_run ? m_run->logsWhenRunViaTests : QVariantList(); }
    void setLogsWhenRunViaTests(const QVariantList &logs) { runState().logsWhenRunViaTests = logs; }
    /// Empties the log, wherever it is kept.
    void clearLog();

    // Data that the plug-in keeps on layers and documents of the host, where no other plug-in sees it. The forms
    // without an identifier work for this command's own plug-in.

    /// Nil when the plug-in keeps no such value, or anything that is asked with is nil.
    QVariant valueForKeyOnLayer(const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &layer,
        const std::optional<QString> &forPluginIdentifier) const;
    QVariant valueForKeyOnDocument(const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &document,
        const std::optional<QString> &forPluginIdentifier) const;
    QVariant valueForKeyOnLayer(const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &layer) const;
    QVariant valueForKeyOnDocument(
        const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &document) const;

    /// Keeps a copy of a value that JSON can hold; nil (invalid) removes it. Anything else, or nil for one of the
    /// others, is logged as an error and changes nothing.
    void setValueForKeyOnObject(const QVariant &value, const std::optional<QString> &key,
        const std::shared_ptr<UserInfoOwner> &object, const std::optional<QString> &forPluginIdentifier);
    void setValueForKeyOnLayer(const QVariant &value, const std::optional<QString> &key,
        const std::shared_ptr<UserInfoOwner> &layer, const std::optional<QString> &forPluginIdentifier);
    void setValueForKeyOnDocument(const QVariant &value, const std::optional<QString> &key,
        const std::shared_ptr<UserInfoOwner> &document, const std::optional<QString> &forPluginIdentifier);
    void setValueForKeyOnLayer(
        const QVariant &value, const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &layer);
    void setValueForKeyOnDocument(
        const QVariant &value, const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &document);
    /// Under which the command's plug-in keeps its data: the plug-in's identifier, or the command's specifier as text
    /// when it belongs to no plug-in.
    std::optional<QString> pluginBundleIdentifierForMetadata() const;

    const ScriptClass &scriptClass() const override;

    // What its sessions find outside of the language

    /// The application's service of that name (LTAppEnvironment), else the framework's own.
    QVariant hostService(const QString &name, const std::shared_ptr<ScriptHost> &host) override;
    ScriptGlobal scriptGlobal(const QString &name) override;

private:
    /// Made by the first run: most commands are never run.
    struct RunState
    {
        QPointer<KRPluginCommandManager> manager;
        std::shared_ptr<COScript> session;
        ScriptDictionaryPointer context;
        /// What the context's "plugin" stands for stays in memory as long as the context.
        std::shared_ptr<KRPluginCommandBundle> bundleOfContext;
        std::optional<QString> executingScript;
        QVariant returnValue;
        QVariantList logsWhenRunViaTests;
        bool errorInScript = false;
    };

    RunState &runState();
    std::shared_ptr<KRPluginLogAction> logAction() const;

    std::optional<QString> m_identifier;
    std::shared_ptr<KRPluginScript> m_script;
    std::optional<QString> m_name;
    /// Shared by all commands that have the usual handlers.
    std::shared_ptr<const HandlerIndex> m_handlers;
    std::optional<QString> m_shortcut;
    Scope m_scope;
    bool m_disableCocoaScriptPreprocessor = false;
    std::weak_ptr<KRPluginCommandBundle> m_pluginBundle;
    COScript::CoreModules m_coreModuleMap;
    mutable std::unique_ptr<KRPluginCommandSpecifier> m_commandSpecifier;
    std::unique_ptr<RunState> m_run;
};
