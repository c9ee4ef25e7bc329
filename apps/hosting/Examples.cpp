#include "hosting/Examples.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

std::optional<QString> examplesFolder()
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    for (const auto &place : {QStringLiteral("examples"), QStringLiteral("../share/korvan/examples")}) {
        const auto path = programFolder.filePath(place);
        if (QFileInfo(path).isDir())
            return QDir::cleanPath(path);
    }
    return std::nullopt;
}
