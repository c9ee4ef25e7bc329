#pragma once

#include <QString>

// The keys of a command's entry in the manifest, and of its table of handlers.
inline const QString KRPluginCommandScriptPathKey = QStringLiteral("script");
inline const QString KRPluginCommandNameKey = QStringLiteral("name");
inline const QString KRPluginCommandIdentifierKey = QStringLiteral("identifier");
inline const QString KRPluginCommandHandlersKey = QStringLiteral("handlers");
inline const QString KRPluginCommandHandlerKey = QStringLiteral("handler");
inline const QString KRPluginCommandShortcutKey = QStringLiteral("shortcut");
inline const QString KRPluginCommandScopeKey = QStringLiteral("scope");
inline const QString KRPluginCommandScopeApplicationValue = QStringLiteral("application");
/// The default; nothing compares against it.
inline const QString KRPluginCommandScopeDocumentValue = QStringLiteral("document");
inline const QString KRPluginCommandRunHandlerKey = QStringLiteral("run");
inline const QString KRPluginCommandSetUpHandlerKey = QStringLiteral("setUp");
inline const QString KRPluginCommandTearDownHandlerKey = QStringLiteral("tearDown");
inline const QString KRPluginCommandActionsKey = QStringLiteral("actions");
/// For hosts; the framework itself does not read it.
inline const QString KRPluginCommandDocumentChangedHandlerKey = QStringLiteral("onDocumentChanged");

// User defaults.
inline const QString KRPluginCommandAPILocationKey = QStringLiteral("KorvanAPILocation");
inline const QString KRPluginCommandAlwaysReloadKey = QStringLiteral("AlwaysReloadScript");
/// How many seconds of processor time a script may take before it is stopped; 10 when absent, 0 for no limit.
inline const QString KRPluginCommandScriptTimeLimitKey = QStringLiteral("KRPluginScriptTimeLimit");
