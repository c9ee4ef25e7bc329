#pragma once

#include "platform/Export.h"

#include <QString>
#include <QUrl>
#include <QVariant>
#include <QVariantMap>

#include <memory>

/// A script session as native services see it. Main thread only.
class KORVAN_EXPORT ScriptHost
{
public:
    virtual ~ScriptHost();

    /// The session's name: for a command, its specifier as text.
    virtual QString name() const = 0;
    /// What the session was given as its environment, "scriptURL" above all.
    virtual QVariantMap environment() const = 0;
    /// Logs a value as the script's own print() does. Nothing once the session has ended.
    virtual void print(const QVariant &value) = 0;
    /// The session keeps running until everything that this has answered is gone, as it does for a timer. Nobody has to
    /// let go of it at the session's end.
    virtual std::shared_ptr<void> keepRunning() = 0;
    virtual bool isEnded() const = 0;
};

/// A global that a core module implements: `property` of what the module in `file` exports.
struct ScriptGlobal
{
    /// Empty for a global that does not exist.
    QUrl file;
    /// Empty for all that the module exports.
    QString property;
};

/// What a session finds outside of the language: native services for its core modules, and core modules for its
/// globals. Sessions hold it weakly. Main thread only.
class KORVAN_EXPORT ScriptHosting
{
public:
    virtual ~ScriptHosting();

    /// What `require('host:NAME')` answers in a core module: a ScriptObjectPointer, a NativeFunction, or plain values;
    /// nil when there is no service of that name. Asked for once in each session, when a module first requires it. The
    /// session keeps the answer until it ends, and with it an object that nobody else owns: there, an object that still
    /// waits for something gives it up.
    ///
    /// A plug-in's own files cannot require services, so a service may do what no plug-in should; what the modules pass
    /// on is theirs to decide. `host` may be kept weakly.
    virtual QVariant hostService(const QString &name, const std::shared_ptr<ScriptHost> &host) = 0;

    /// The core module behind one of the globals in ScriptGlobalNames.h. Asked for when a source mentions it.
    virtual ScriptGlobal scriptGlobal(const QString &name) = 0;
};
