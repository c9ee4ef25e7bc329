#include "FolderCopy.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

bool copyFolder(const QString &from, const QString &to)
{
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const auto source = files.next();
        const auto target = to + source.mid(from.size());
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(source, target))
            return false;
    }
    return true;
}
