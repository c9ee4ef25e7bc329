#include "plugins/PluginInstaller.h"

#include "bundles/KRPluginBundle.h"
#include "hosting/FolderCopy.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "updates/ArchiveExtraction.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

struct InstallerTexts
{
    Q_DECLARE_TR_FUNCTIONS(PluginInstaller)
};

KRError installationError(const QString &text)
{
    return {QStringLiteral("korvan-host"), 0, text};
}

QUrl folderURL(const QString &path)
{
    return QUrl::fromLocalFile(QDir::cleanPath(path) + u'/');
}

bool isBundle(const QFileInfo &file)
{
    return file.isDir() && file.suffix().compare(QStringLiteral("korvanplugin"), Qt::CaseInsensitive) == 0;
}

} // namespace

PluginInstaller::~PluginInstaller() = default;

bool ManagedInstaller::accepts(const QString &path) const
{
    const QFileInfo file(path);
    return isBundle(file) || (file.isFile() && file.suffix().compare(QStringLiteral("zip"), Qt::CaseInsensitive) == 0);
}

std::optional<KRError> ManagedInstaller::install(const QString &path)
{
    const QFileInfo file(path);
    const auto unusable = installationError(InstallerTexts::tr("“%1” holds no plug-in.").arg(file.fileName()));
    // Beside the plug-ins, so that the last step is a move on one disk; a copy that is not finished is never loaded.
    const QDir support(LTAppEnvironment::current().applicationSupportFolder().toLocalFile());
    support.mkpath(QStringLiteral("."));
    const QTemporaryDir staging(support.filePath(QStringLiteral("installing-XXXXXX")));
    KRError error = unusable;
    if (isBundle(file)) {
        if (!copyFolder(file.absoluteFilePath(), staging.filePath(file.fileName())))
            return installationError(InstallerTexts::tr("“%1” could not be copied.").arg(file.fileName()));
    } else if (!decompressPluginZip(QUrl::fromLocalFile(file.absoluteFilePath()), folderURL(staging.path()), &error)) {
        return error;
    }
    const auto url = m_manager.firstPluginBundleFoundInFolder(folderURL(staging.path()));
    const auto bundle = url.isEmpty() ? nullptr : KRPluginBundle::pluginBundleWithURL(url);
    if (!bundle)
        return unusable;
    if (!m_manager.installPluginAtURL(url, bundle->identifier().value_or(QString()), &error))
        return error;
    m_manager.reloadPlugins();
    return std::nullopt;
}
