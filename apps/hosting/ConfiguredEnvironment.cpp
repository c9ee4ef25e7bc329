#include "hosting/ConfiguredEnvironment.h"

#include <QDir>

namespace {

/// Of the reference host, which the command line stands in for.
const auto referenceHostVersion = QStringLiteral("98.3");

QUrl folderURL(const QString &path)
{
    return QUrl::fromLocalFile(QDir::cleanPath(QDir::current().absoluteFilePath(path)) + u'/');
}

} // namespace

ConfiguredEnvironment::ConfiguredEnvironment(const HostingOptions &options)
    : m_options(options)
    , m_defaults(options.defaultsFile ? std::make_unique<UserDefaults>(*options.defaultsFile)
                                      : std::make_unique<UserDefaults>())
{
    m_defaults->setOverrides(options.defaults);
}

ConfiguredEnvironment::~ConfiguredEnvironment() = default;

QString ConfiguredEnvironment::bundleShortVersion() const
{
    return m_options.hostVersion.value_or(referenceHostVersion);
}

QUrl ConfiguredEnvironment::mainBundleResourcesFolder() const
{
    return m_options.resourcesFolder ? folderURL(*m_options.resourcesFolder)
                                     : LTAppEnvironment::mainBundleResourcesFolder();
}

QUrl ConfiguredEnvironment::applicationSupportFolder() const
{
    return m_options.supportFolder ? folderURL(*m_options.supportFolder) : LTAppEnvironment::applicationSupportFolder();
}

QString ConfiguredEnvironment::blocklistEndpoint() const
{
    return m_options.blocklistURL.value_or(LTAppEnvironment::blocklistEndpoint());
}
