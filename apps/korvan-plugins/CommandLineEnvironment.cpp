#include "CommandLineEnvironment.h"

#include "Output.h"

#include <QDir>

#include <unistd.h>

namespace {

/// The version of the reference host, which this program stands in for.
const auto referenceHostVersion = QStringLiteral("98.3");

QUrl folderURL(const QString &path)
{
    return QUrl::fromLocalFile(QDir::cleanPath(QDir::current().absoluteFilePath(path)) + u'/');
}

} // namespace

CommandLineEnvironment::CommandLineEnvironment(const GlobalOptions &options)
    : m_options(options)
    , m_defaults(options.defaultsFile ? std::make_unique<UserDefaults>(*options.defaultsFile)
                                      : std::make_unique<UserDefaults>())
    , m_presenter(STDIN_FILENO)
{
    m_defaults->setOverrides(options.defaults);
}

CommandLineEnvironment::~CommandLineEnvironment() = default;

QString CommandLineEnvironment::bundleShortVersion() const
{
    return m_options.hostVersion.value_or(referenceHostVersion);
}

QUrl CommandLineEnvironment::mainBundleResourcesFolder() const
{
    return m_options.resourcesFolder ? folderURL(*m_options.resourcesFolder)
                                     : LTAppEnvironment::mainBundleResourcesFolder();
}

QUrl CommandLineEnvironment::applicationSupportFolder() const
{
    return m_options.supportFolder ? folderURL(*m_options.supportFolder) : LTAppEnvironment::applicationSupportFolder();
}

QString CommandLineEnvironment::blocklistEndpoint() const
{
    return m_options.blocklistURL.value_or(LTAppEnvironment::blocklistEndpoint());
}

void CommandLineEnvironment::log(const QVariantMap &entry, const QString &)
{
    printToStandardError(entry.value(QStringLiteral("stringValue")).toString());
}

void CommandLineEnvironment::systemLog(const QString &line)
{
    printToStandardError(line);
}
