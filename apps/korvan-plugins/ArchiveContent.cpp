#include "ArchiveContent.h"

#include "EditorFiles.h"
#include "platform/archive/LTZipReader.h"

#include <QFile>

#include <algorithm>
#include <filesystem>

namespace {

/// What is for whoever works on the plug-in.
bool isForAuthors(const QString &path, bool isFolder)
{
    return path == editorProject || path == editorTypings || (path == u"tests" && isFolder);
}

bool isUTF8(const std::string &bytes)
{
    return QUtf8StringView(bytes.data(), qsizetype(bytes.size())).isValidUtf8();
}

KRError notListed(const QString &folder, const std::error_code &reason)
{
    return {
        {}, 0, QStringLiteral("\"%1\" cannot be packed: %2.").arg(folder, QString::fromStdString(reason.message()))};
}

} // namespace

Result<QStringList> itemsToPack(const QString &folder)
{
    namespace fs = std::filesystem;
    const std::string top = QFile::encodeName(folder).toStdString();
    QStringList paths;
    std::error_code failure;
    // A folder that may not be listed is an item all the same.
    fs::recursive_directory_iterator item(top, fs::directory_options::skip_permission_denied, failure);
    while (!failure && item != fs::recursive_directory_iterator()) {
        const auto path = item->path().native().substr(top.size() + 1);
        if (!isUTF8(path))
            return refusal(QString::fromStdString(path), "has a name that is not UTF-8");
        const auto name = QString::fromStdString(path);
        if (isForAuthors(name, item->is_directory() && !item->is_symlink()))
            item.disable_recursion_pending();
        else
            paths.append(name);
        item.increment(failure);
    }
    if (failure)
        return notListed(folder, failure);
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::optional<KRError> flawOfArchive(const QString &archive)
{
    const auto reader = LTZipReader::readerWithURL(QUrl::fromLocalFile(archive));
    if (reader->hasTooManyEntries())
        return KRError{{}, 0, QStringLiteral("The plug-in cannot be packed: it has more files than hosts unpack.")};
    for (qsizetype index = 0; index < reader->contents().size(); ++index) {
        if (!reader->rawDataAtIndex(index)) {
            const auto &path = reader->contents().at(index);
            return refusal(path.mid(path.indexOf(u'/') + 1), "is too large, or too deep in folders, to be unpacked");
        }
    }
    return std::nullopt;
}

KRError refusal(const QString &path, const char *reason)
{
    return {{}, 0, QStringLiteral("\"%1\" cannot be packed: it %2.").arg(path, QString::fromUtf8(reason))};
}
