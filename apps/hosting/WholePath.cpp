#include "hosting/WholePath.h"

#include <QDir>
#include <QFileInfo>

QString wholePath(const QString &path)
{
    const QFileInfo file(path);
    if (file.exists())
        return file.canonicalFilePath();
    const auto folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return folder.isEmpty() ? file.absoluteFilePath() : QDir(folder).filePath(file.fileName());
}
