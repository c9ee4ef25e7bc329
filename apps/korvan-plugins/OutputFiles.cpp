#include "OutputFiles.h"

#include "hosting/WholePath.h"
#include "platform/AtomicFile.h"

#include <QFile>
#include <QFileInfo>

std::optional<KRError> clashOfOutput(const NamedFile &output, const QList<NamedFile> &others)
{
    if (isDevice(QFile::encodeName(output.path))) // which takes any number of outputs, one after the other
        return std::nullopt;
    for (const auto &other : others) {
        if (wholePath(output.path) == wholePath(other.path)) {
            return KRError{{}, 0,
                QStringLiteral("%1 and %2 name the same file, \"%3\". Name another one for %1.")
                    .arg(output.option, other.option, output.path)};
        }
    }
    return std::nullopt;
}

std::optional<KRError> refusalToWrite(const QString &what, const QString &path)
{
    const QFileInfo file(path);
    if (isDevice(QFile::encodeName(path)))
        return std::nullopt;
    const QFileInfo folder(file.absolutePath());
    QString reason;
    if (file.isDir())
        reason = QStringLiteral("There is a folder of that name.");
    else if (!folder.isDir())
        reason = QStringLiteral("The folder \"%1\" does not exist.").arg(folder.filePath());
    else if (!folder.isWritable())
        reason = QStringLiteral("Nothing may be written to the folder \"%1\".").arg(folder.filePath());
    if (reason.isEmpty())
        return std::nullopt;
    return KRError{{}, 0, QStringLiteral("Cannot write the %1 \"%2\": %3").arg(what, path, reason)};
}
