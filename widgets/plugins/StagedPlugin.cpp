#include "widgets/plugins/StagedPlugin.h"

#include "localization/Localizable.h"
#include "updates/ArchiveExtraction.h"
#include "widgets/PluginText.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QUrl>

#include <filesystem>

namespace {

const auto pluginSuffix = QStringLiteral("korvanplugin");
const auto archiveSuffix = QStringLiteral("zip");

bool hasSuffix(const QFileInfo &file, const QString &suffix)
{
    return file.suffix().compare(suffix, Qt::CaseInsensitive) == 0;
}

std::optional<KRError> copyBundle(const QFileInfo &bundle, const QString &folder)
{
    namespace fs = std::filesystem;
    const auto encoded = [](const QString &path) { return fs::path(QFile::encodeName(path).toStdString()); };
    std::error_code error;
    fs::copy(encoded(bundle.absoluteFilePath()), encoded(folder + u'/' + bundle.fileName()),
        fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    if (!error)
        return std::nullopt;
    return pluginFileError(Localizable::tr("“%1” cannot be copied: %2")
                               .arg(plainLine(bundle.fileName()), QString::fromLocal8Bit(error.message().c_str())));
}

std::optional<KRError> unpackArchive(const QFileInfo &archive, const QString &folder)
{
    KRError error;
    if (decompressPluginZip(
            QUrl::fromLocalFile(archive.absoluteFilePath()), QUrl::fromLocalFile(folder + u'/'), &error))
        return std::nullopt;
    if (error != KRError())
        return error;
    return pluginFileError(
        Localizable::tr("“%1” is no archive, is empty or cannot be read.").arg(plainLine(archive.fileName())));
}

/// A link that leads nowhere could lead anywhere tomorrow.
bool hasLinkOut(const QString &folder)
{
    const auto root = QFileInfo(folder).canonicalFilePath() + u'/';
    QDirIterator entries(
        folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        entries.next();
        const auto entry = entries.fileInfo();
        if (entry.isSymbolicLink() && !entry.canonicalFilePath().startsWith(root))
            return true;
    }
    return false;
}

} // namespace

StagedPlugin::StagedPlugin(const QString &parent)
    : m_folder(parent + QStringLiteral("/staged-XXXXXX"))
{ }

Result<std::shared_ptr<StagedPlugin>> StagedPlugin::stage(const QString &path, const QString &parent)
{
    const std::shared_ptr<StagedPlugin> staged(new StagedPlugin(parent));
    if (!staged->m_folder.isValid())
        return pluginFileError(staged->m_folder.errorString());
    if (const auto error = staged->fill(path))
        return *error;
    return staged;
}

std::optional<KRError> StagedPlugin::fill(const QString &path)
{
    const QFileInfo file(QDir::cleanPath(path));
    const auto name = plainLine(file.fileName());
    if (!file.exists())
        return pluginFileError(Localizable::tr("There is no file “%1”.").arg(name));
    if (!mayBePlugin(path))
        return pluginFileError(Localizable::tr("“%1” is neither a plug-in nor a zip archive of one.").arg(name));
    const auto failure = file.isDir() ? copyBundle(file, folder()) : unpackArchive(file, folder());
    if (!failure && hasLinkOut(folder()))
        return pluginFileError(Localizable::tr("“%1” holds a link that leads out of it.").arg(name));
    return failure;
}

bool mayBePlugin(const QString &path)
{
    const QFileInfo file(QDir::cleanPath(path));
    return file.isDir() ? hasSuffix(file, pluginSuffix)
                        : hasSuffix(file, archiveSuffix) || hasSuffix(file, pluginSuffix);
}

KRError pluginFileError(const QString &text)
{
    return {QStringLiteral("KorvanPluginFileErrorDomain"), 0, text};
}
