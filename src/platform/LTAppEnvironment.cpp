#include "platform/LTAppEnvironment.h"

#include "platform/AlertPresenter.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QSysInfo>

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>

namespace {

Q_LOGGING_CATEGORY(systemLogCategory, "korvan.pluginmanager")

std::atomic<LTAppEnvironment *> installedEnvironment = nullptr;

/// Held while another thread uses the installed environment: it stays for so long.
std::mutex &installationMutex()
{
    static std::mutex mutex;
    return mutex;
}

/// Answers the one before.
LTAppEnvironment *install(LTAppEnvironment *environment)
{
    const std::lock_guard lock(installationMutex());
    return installedEnvironment.exchange(environment);
}

} // namespace

/// What the default answers are made of; the settings are read only once somebody asks for them.
struct LTAppEnvironment::DefaultServices
{
    std::optional<UserDefaults> userDefaults;
    NotificationCenter notificationCenter;
    QtMainQueue mainQueue;
};

LogTarget::~LogTarget() = default;

AlertPresenter::~AlertPresenter() = default;

LTAppEnvironment::LTAppEnvironment()
    : m_defaultServices(std::make_unique<DefaultServices>())
{ }

LTAppEnvironment::~LTAppEnvironment() = default;

LTAppEnvironment &LTAppEnvironment::current()
{
    static LTAppEnvironment defaultEnvironment;
    auto *installed = installedEnvironment.load();
    return installed ? *installed : defaultEnvironment;
}

LTAppEnvironment::Installation::Installation(LTAppEnvironment &environment)
    : m_previous(install(&environment))
{ }

LTAppEnvironment::Installation::~Installation()
{
    install(m_previous);
}

void LTAppEnvironment::runOnMainQueue(std::function<void()> work)
{
    const std::lock_guard lock(installationMutex());
    current().mainQueue().async(std::move(work));
}

QString LTAppEnvironment::bundleShortVersion() const
{
    const auto version = QCoreApplication::applicationVersion();
    return version.isEmpty() ? QStringLiteral("1.0") : version;
}

QUrl LTAppEnvironment::mainBundleResourcesFolder() const
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    const auto beside = programFolder.filePath(QStringLiteral("resources"));
    if (QFileInfo(beside).isDir())
        return fileURLFromPath(beside, FileKind::Folder);
    const auto shared = QStringLiteral("../share/%1/resources").arg(QCoreApplication::applicationName());
    return fileURLFromPath(QDir::cleanPath(programFolder.filePath(shared)), FileKind::Folder);
}

QUrl LTAppEnvironment::applicationSupportFolder() const
{
    return fileURLFromPath(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation), FileKind::Folder);
}

QString LTAppEnvironment::blocklistEndpoint() const
{
    return QStringLiteral("https://plugins.veldmark.example");
}

quint32 LTAppEnvironment::executableArchitecture() const
{
    const auto architecture = QSysInfo::buildCpuArchitecture();
    if (architecture == u"x86_64")
        return 0x01000007;
    return architecture == u"arm64" ? 0x0100000C : 0;
}

QImage LTAppEnvironment::imageNamed(const QString &) const
{
    return {};
}

LogTarget *LTAppEnvironment::logTarget()
{
    return nullptr;
}

AlertPresenter *LTAppEnvironment::alertPresenter()
{
    return nullptr;
}

UserPresenter *LTAppEnvironment::userPresenter()
{
    return nullptr;
}

OpenDocuments *LTAppEnvironment::openDocuments()
{
    return nullptr;
}

void LTAppEnvironment::runModalAlert(const Alert &alert)
{
    if (auto *const presenter = alertPresenter())
        presenter->runModal(alert);
    else
        systemLog(QStringLiteral("%1: %2").arg(alert.messageText, alert.informativeText));
}

void LTAppEnvironment::systemLog(const QString &line)
{
    qCInfo(systemLogCategory).noquote() << line;
}

ScriptTimeLimitDecision LTAppEnvironment::scriptExceededTimeLimit(const QString &, double)
{
    return ScriptTimeLimitDecision::Stop;
}

UserDefaults &LTAppEnvironment::userDefaults()
{
    if (!m_defaultServices->userDefaults)
        m_defaultServices->userDefaults.emplace();
    return *m_defaultServices->userDefaults;
}

NotificationCenter &LTAppEnvironment::notificationCenter()
{
    return m_defaultServices->notificationCenter;
}

MainQueue &LTAppEnvironment::mainQueue()
{
    return m_defaultServices->mainQueue;
}

QVariant LTAppEnvironment::scriptService(
    const QString &, const std::shared_ptr<ScriptHost> &, const std::shared_ptr<ScriptObject> &)
{
    return {};
}

QUrl LTAppEnvironment::urlForResource(const QString &name, const QString &extension) const
{
    const auto folder = pathFromFileURL(mainBundleResourcesFolder());
    if (folder.isEmpty())
        return {};
    const auto fileName = name + u'.' + extension;
    const auto path = pathByAppending(folder, fileName.toUtf8());
    switch (kindOfTarget(path)) {
    case FolderEntry::Kind::File:
        return fileURLFromPath(path, FileKind::File);
    case FolderEntry::Kind::Folder:
        return fileURLFromPath(path, FileKind::Folder);
    default:
        return {};
    }
}

QUrl LTAppEnvironment::applicationSupportDirectory(const QString &subDirectory, FolderCreation creation) const
{
    const auto folder = pathFromFileURL(applicationSupportFolder());
    if (folder.isEmpty())
        return {};
    const auto path = pathByAppending(folder, subDirectory.toUtf8());
    if (creation == FolderCreation::IfNeeded) {
        std::error_code error;
        std::filesystem::create_directories(path.toStdString(), error);
    }
    return fileURLFromPath(path, FileKind::Folder);
}
