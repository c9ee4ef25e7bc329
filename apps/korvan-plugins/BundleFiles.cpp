#include "BundleFiles.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QStringList>

QByteArray stampOfFiles(const QString &bundle)
{
    constexpr qsizetype mostFiles = 10'000;
    QStringList stamps;
    // It goes around circles of links itself.
    QDirIterator files(bundle, QDir::Files, QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (files.hasNext() && stamps.size() < mostFiles) {
        const QFileInfo file(files.next());
        stamps.append(QStringLiteral("%1\t%2\t%3")
                          .arg(file.filePath())
                          .arg(file.size())
                          .arg(file.lastModified().toMSecsSinceEpoch()));
    }
    stamps.sort(); // the file system's own order may change by itself
    return stamps.join(u'\n').toUtf8();
}
