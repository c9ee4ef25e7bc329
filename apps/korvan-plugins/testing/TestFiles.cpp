#include "TestFiles.h"

#include "bundles/PluginBundleExtension.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace {

bool isBundle(const QString &folder)
{
    return QFileInfo(folder).suffix().compare(QLatin1StringView(pluginBundleExtension), Qt::CaseInsensitive) == 0
        || QFileInfo(folder + QStringLiteral("/Contents/Korvan/manifest.json")).isFile();
}

QString bundleAround(const QString &file)
{
    for (auto folder = QFileInfo(file).path(); !QFileInfo(folder).isRoot(); folder = QFileInfo(folder).path()) {
        if (isBundle(folder))
            return folder;
    }
    return {};
}

/// What others have put there has tests of its own.
bool isOfAnother(const QString &path)
{
    return path.contains(QStringLiteral("/node_modules/"));
}

QStringList testsIn(const QString &folder)
{
    QStringList paths;
    QDirIterator files(folder, {QStringLiteral("*.test.js")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const auto path = files.next();
        if (!isOfAnother(path.mid(folder.size())))
            paths.append(path);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

} // namespace

QString TestFile::name() const
{
    return bundle.isEmpty() ? QFileInfo(path).fileName() : QDir(bundle).relativeFilePath(path);
}

Result<QList<TestFile>> testFilesAt(const QString &path)
{
    const auto place = QFileInfo(path).canonicalFilePath();
    if (place.isEmpty())
        return KRError{{}, 0, QStringLiteral("There is no file \"%1\".").arg(path)};
    QStringList paths{place};
    if (QFileInfo(place).isDir())
        paths = testsIn(isBundle(place) ? place + QStringLiteral("/tests") : place);
    if (paths.isEmpty())
        return KRError{{}, 0, QStringLiteral("There are no tests in \"%1\".").arg(path)};
    QList<TestFile> files;
    for (const auto &file : std::as_const(paths))
        files.append({file, bundleAround(file)});
    return files;
}
