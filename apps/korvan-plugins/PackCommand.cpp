#include "CommandLineEnvironment.h"
#include "Commands.h"
#include "PluginArchive.h"
#include "UpdateFeedFile.h"
#include "bundles/KRPluginBundle.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

ExitCode fail(const KRError &error, Output &output)
{
    output.error(error);
    return ExitCode::Failed;
}

ExitCode fail(const QString &message, Output &output)
{
    return fail(KRError{{}, 0, message}, output);
}

/// Hosts pass over other versions in a feed.
bool canBePublished(const QString &version)
{
    static const QRegularExpression rule(
        QStringLiteral("^(?=.*\\S)[^\\x{0}-\\x{1F}\\x{7F}-\\x{9F}]{1,128}\\z"), QRegularExpression::DontCaptureOption);
    return rule.match(version).hasMatch();
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

/// "Tidy Layers-1.2.0.zip" in the current folder.
QString usualArchive(const QString &bundle, const QString &version)
{
    auto name = QFileInfo(bundle).completeBaseName() + u'-' + version + QStringLiteral(".zip");
    return absolutePath(name.replace(u'/', u'-'));
}

bool isInside(const QString &path, const QString &folder)
{
    return (QFileInfo(QFileInfo(path).path()).canonicalFilePath() + u'/').startsWith(folder + u'/');
}

std::optional<QString> digestOf(const QString &archive)
{
    QFile file(archive);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return std::nullopt;
    return QString::fromLatin1(hash.result().toHex());
}

/// A URL that ends in "/" is the folder on the server in which the archive will be.
QString downloadURL(const QString &url, const QString &archive)
{
    const auto name = QUrl::toPercentEncoding(QFileInfo(archive).fileName());
    return url.endsWith(u'/') ? url + QString::fromLatin1(name) : url;
}

} // namespace

ExitCode packPlugin(const GlobalOptions &options, const PackOptions &pack, Output &output)
{
    CommandLineEnvironment environment(options);
    const LTAppEnvironment::Installation installation(environment);
    const auto folder = QFileInfo(pack.path).canonicalFilePath();
    const auto bundle =
        folder.isEmpty() ? nullptr : KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(folder + u'/'));
    if (!bundle)
        return fail(QStringLiteral("There is no plug-in \"%1\".").arg(pack.path), output);
    const auto version = bundle->version().value_or(QString());
    if (!canBePublished(version))
        return fail(QStringLiteral("The version \"%1\" cannot be published.").arg(version), output);
    const auto archive = pack.archive ? absolutePath(*pack.archive) : usualArchive(folder, version);
    const auto feed = pack.feed ? std::optional(absolutePath(*pack.feed)) : std::nullopt;
    if (isInside(archive, folder) || (feed && isInside(*feed, folder)))
        return fail(QStringLiteral("What is written may not be in the plug-in that is packed."), output);

    if (const auto error = packFolder(folder, archive))
        return fail(*error, output);
    const auto digest = digestOf(archive);
    if (!digest)
        return fail(QStringLiteral("%1 cannot be read.").arg(archive), output);
    if (feed) {
        const OfferedVersion offered{
            bundle->name().value_or(QString()), version, downloadURL(pack.url, archive), QFileInfo(archive).size()};
        if (const auto error = writeUpdateFeed(offered, *updateFeedFormat(*feed), *feed))
            return fail(*error, output);
    }
    output.document({{QStringLiteral("archive"), archive},
        {QStringLiteral("feed"), feed ? QVariant(*feed) : QVariant::fromValue(nullptr)},
        {QStringLiteral("sha256"), *digest}});
    output.line({{QStringLiteral("Packed ")}, {archive, Output::Colour::Bold}});
    if (feed)
        output.line({{QStringLiteral("Feed   ")}, {*feed, Output::Colour::Bold}});
    output.line(QStringLiteral("SHA-256 ") + *digest);
    return ExitCode::Done;
}
