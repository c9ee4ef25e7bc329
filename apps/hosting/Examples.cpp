#include "hosting/Examples.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

std::optional<QString> folderWithProgram(const QString &name)
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    for (const auto &place : {name, QStringLiteral("../share/korvan/") + name}) {
        const auto path = programFolder.filePath(place);
        if (QFileInfo(path).isDir())
            return QDir::cleanPath(path);
    }
    return std::nullopt;
}

} // namespace

std::optional<QString> examplesFolder()
{
    return folderWithProgram(QStringLiteral("examples"));
}

std::optional<QString> typingsFolder()
{
    return folderWithProgram(QStringLiteral("typings"));
}
