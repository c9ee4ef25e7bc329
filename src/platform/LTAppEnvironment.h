#pragma once

#include "platform/Export.h"

#include <QImage>
#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <functional>
#include <memory>

class AlertPresenter;
class MainQueue;
class NotificationCenter;
class OpenDocuments;
class ScriptHost;
class ScriptObject;
class UserDefaults;
class UserPresenter;
struct Alert;

/// Where messages for the user go: a console window, a terminal.
class KORVAN_EXPORT LogTarget
{
public:
    virtual ~LogTarget();

    /// Takes one entry: a dictionary with "payload", "stringValue" and "level". `from` names its sender. Called on the
    /// main thread.
    virtual void log(const QVariantMap &entry, const QString &from) = 0;
};

/// What happens to a script that has run for too long.
enum class ScriptTimeLimitDecision {
    Stop,
    /// It may run for the same time once more before the question comes again.
    GoOn
};

/// What the library asks of the application that it lives in. The application gives one at start-up, for the whole
/// process; without it, this class itself answers as suits a plain Qt program.
///
/// Every function is called on the main thread unless it says otherwise.
class KORVAN_EXPORT LTAppEnvironment
{
public:
    LTAppEnvironment();
    virtual ~LTAppEnvironment();
    LTAppEnvironment(const LTAppEnvironment &) = delete;
    LTAppEnvironment &operator=(const LTAppEnvironment &) = delete;

    /// The installed environment, or the default one.
    static LTAppEnvironment &current();

    /// Runs `work` on the main thread, later, through the queue of the environment that is in force now. Any thread,
    /// also while environments come and go.
    static void runOnMainQueue(std::function<void()> work);

    /// Puts an environment in force for as long as it lives, then the one before it again. Last in, first out.
    class KORVAN_EXPORT Installation
    {
    public:
        explicit Installation(LTAppEnvironment &environment);
        ~Installation();
        Installation(const Installation &) = delete;
        Installation &operator=(const Installation &) = delete;

    private:
        LTAppEnvironment *m_previous;
    };

    /// The application's version, such as "98.3". By default QCoreApplication's, "1.0" when it has none.
    virtual QString bundleShortVersion() const;

    /// The folder of the application's own resources. By default "resources" beside the program, else
    /// "../share/<program name>/resources" seen from it.
    virtual QUrl mainBundleResourcesFolder() const;

    /// The per-user folder for the application's data; need not exist. By default Qt's AppDataLocation. Updates are
    /// unpacked into it on the network's thread, so this may be called from any thread.
    virtual QUrl applicationSupportFolder() const;

    /// Where the vendor publishes the versions of plug-ins that do not work: a URL up to and including the host's name.
    /// HTTPS; plain HTTP only for this computer itself.
    virtual QString blocklistEndpoint() const;

    /// The type number of the processor that the application's code is built for, in the numbering of executable
    /// headers (0x01000007 for 64-bit x86, 0x0100000C for 64-bit Arm); 0 for any other.
    virtual quint32 executableArchitecture() const;

    /// One of the application's pictures; a null image when it has none of that name (the default).
    virtual QImage imageNamed(const QString &name) const;

    /// Who takes messages for the user; null when nobody does (the default). It has to outlive the call only.
    virtual LogTarget *logTarget();

    /// Who shows alerts; null when nobody does (the default): they go into the system's log then, each in one line. It
    /// has to outlive the call only. The Widgets library has one.
    virtual AlertPresenter *alertPresenter();

    /// Who talks with the user for plug-ins; null when nobody can (the default): questions have no answer then. It has
    /// to outlive every session. The Widgets library has one.
    virtual UserPresenter *userPresenter();

    /// The documents that scripts may ask for; null when there are none but those of the commands' contexts (the
    /// default).
    virtual OpenDocuments *openDocuments();

    /// Takes one line for the system's log. By default Qt's logging category "korvan.pluginmanager". May be called
    /// from any thread.
    virtual void systemLog(const QString &line);

    /// Asked when the script of the session `name` has computed for `seconds` without coming back. By default it is
    /// stopped. Other scripts' timers wait while the answer is awaited.
    virtual ScriptTimeLimitDecision scriptExceededTimeLimit(const QString &name, double seconds);

    /// A native service for the application's own core modules, as ScriptHosting::hostService() describes it: what
    /// `require('host:NAME')` answers there. It comes before the framework's service of the same name (they are listed
    /// in docs/architecture.md). `owner` is whom the session belongs to, a KRPluginCommand. Nil for a name that the
    /// application has no service for (by default, every one).
    virtual QVariant scriptService(
        const QString &name, const std::shared_ptr<ScriptHost> &host, const std::shared_ptr<ScriptObject> &owner);

    /// Thread-safe, and the same for as long as the environment lives.
    virtual UserDefaults &userDefaults();
    virtual NotificationCenter &notificationCenter();
    /// Thread-safe.
    virtual MainQueue &mainQueue();

    /// Shows an alert through alertPresenter(), or logs it.
    void runModalAlert(const Alert &alert);

    /// The resource `name`.`extension` in the resources folder, a file or a folder (the name may hold slashes); empty
    /// when there is none.
    QUrl urlForResource(const QString &name, const QString &extension) const;

    enum class FolderCreation { IfNeeded, Never };
    /// A folder inside the application support folder; empty when the application has none. A folder that cannot be
    /// created is answered all the same. Any thread.
    QUrl applicationSupportDirectory(const QString &subDirectory, FolderCreation creation) const;

private:
    struct DefaultServices;
    std::unique_ptr<DefaultServices> m_defaultServices;
};
