#include "windows/DroppedFiles.h"

#include "widgets/plugins/PluginFileInstaller.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace {

bool isImage(const QString &suffix)
{
    static const QStringList suffixes{QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
        QStringLiteral("gif"), QStringLiteral("webp"), QStringLiteral("bmp")};
    return suffixes.contains(suffix);
}

} // namespace

DroppedFiles droppedFiles(const QMimeData &data)
{
    DroppedFiles files;
    const auto urls = data.urls();
    for (const auto &url : urls) {
        auto path = url.toLocalFile();
        if (path.endsWith(u'/')) // a folder
            path.chop(1);
        const auto suffix = QFileInfo(path).suffix().toLower();
        if (path.isEmpty())
            continue;
        if (PluginFileInstaller::canInstall(path))
            files.plugins.append(path);
        else if (suffix == u"json")
            files.documents.append(path);
        else if (isImage(suffix))
            files.images.append(path);
    }
    return files;
}
