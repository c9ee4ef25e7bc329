#include "Commands.h"

#include "updates/ArchiveExtraction.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace {

QUrl urlOf(const QString &path)
{
    return QUrl::fromLocalFile(QDir::cleanPath(QDir::current().absoluteFilePath(path)));
}

ExitCode fail(const std::optional<KRError> &error, const QString &text, Output &output)
{
    output.document({{QStringLiteral("ok"), false},
        {QStringLiteral("error"), error ? QVariant::fromValue(errorDocument(*error)) : QVariant::fromValue(nullptr)}});
    if (!output.isJSON())
        output.error(text);
    return ExitCode::Failed;
}

} // namespace

ExitCode unpackArchive(const UnpackOptions &unpack, Output &output)
{
    if (!QFileInfo::exists(unpack.archive)) {
        const auto text = QStringLiteral("There is no file \"%1\".").arg(unpack.archive);
        return fail(KRError{{}, 0, text}, text, output);
    }
    KRError error;
    if (decompressPluginZip(urlOf(unpack.archive), urlOf(unpack.folder), &error)) {
        output.document({{QStringLiteral("ok"), true}, {QStringLiteral("error"), QVariant::fromValue(nullptr)}});
        output.line(QStringLiteral("Unpacked to %1").arg(QDir::current().absoluteFilePath(unpack.folder)));
        return ExitCode::Done;
    }
    if (error == KRError())
        return fail({}, QStringLiteral("The archive is empty or cannot be read."), output);
    return fail(error, error.localizedDescription, output);
}
