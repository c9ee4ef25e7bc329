#include "PluginArchive.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <climits>
#include <deque>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

namespace {

struct Discard
{
    void operator()(zip_t *archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, Discard>;

KRError problem(const QString &archive, const char *reason)
{
    return {{}, 0, QStringLiteral("%1 cannot be written: %2.").arg(archive, QString::fromUtf8(reason))};
}

/// Everything in a folder at any depth, links not followed, each by its path from there.
QStringList itemsIn(const QString &folder)
{
    QStringList paths;
    QDirIterator items(
        folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (items.hasNext())
        paths.append(items.next().mid(folder.size() + 1));
    std::sort(paths.begin(), paths.end());
    return paths;
}

class FolderPacking
{
public:
    FolderPacking(zip_t *archive, const QString &folder)
        : m_archive(archive)
        , m_folder(folder)
        , m_root(QFileInfo(folder).fileName() + u'/')
    { }

    /// Nil when it is packed.
    std::optional<KRError> pack(const QString &path)
    {
        const QFileInfo item(m_folder + u'/' + path);
        if ((m_root + path).contains(u".."))
            return refusal(path, "has two dots in a row in its name, which hosts do not unpack");
        if (item.isSymLink())
            return packLink(path);
        if (item.isDir())
            return item.isReadable() ? std::nullopt : std::optional(refusal(path, "cannot be read"));
        if (item.isFile())
            return packFile(path, item.permission(QFile::ExeOwner));
        return refusal(path, "is neither a file nor a folder");
    }

private:
    static KRError refusal(const QString &path, const char *reason)
    {
        return {{}, 0, QStringLiteral("\"%1\" cannot be packed: it %2.").arg(path, QString::fromUtf8(reason))};
    }

    std::optional<KRError> packLink(const QString &path)
    {
        const auto file = QFile::encodeName(m_folder + u'/' + path);
        QByteArray target(PATH_MAX, '\0');
        const auto length = ::readlink(file.constData(), target.data(), size_t(target.size()));
        if (length < 0)
            return refusal(path, "cannot be read");
        target.truncate(length);
        const auto place = QDir::cleanPath(m_root + QFileInfo(path).path() + u'/' + QFile::decodeName(target));
        if (target.startsWith('/') || !(place + u'/').startsWith(m_root))
            return refusal(path, "is a link that leads out of the plug-in");
        m_linkTargets.push_back(target);
        auto *const source =
            zip_source_buffer(m_archive, m_linkTargets.back().constData(), zip_uint64_t(target.size()), 0);
        return add(path, source, S_IFLNK | 0777);
    }

    std::optional<KRError> packFile(const QString &path, bool canBeRun)
    {
        const auto file = QFile::encodeName(m_folder + u'/' + path);
        return add(path, zip_source_file(m_archive, file.constData(), 0, -1), S_IFREG | (canBeRun ? 0755u : 0644u));
    }

    std::optional<KRError> add(const QString &path, zip_source_t *source, mode_t mode)
    {
        const auto name = (m_root + path).toUtf8();
        const auto entry = source ? zip_file_add(m_archive, name.constData(), source, ZIP_FL_ENC_UTF_8) : -1;
        if (entry < 0)
            zip_source_free(source);
        return finish(entry, mode);
    }

    /// The earliest time that the format knows, and what all systems make of the permissions.
    std::optional<KRError> finish(zip_int64_t entry, mode_t mode)
    {
        constexpr zip_uint16_t firstOfJanuary1980 = (1 << 5) | 1;
        constexpr int modeShift = 16;
        const auto index = zip_uint64_t(entry);
        const bool isDone = entry >= 0 && zip_file_set_dostime(m_archive, index, 0, firstOfJanuary1980, 0) == 0
            && zip_file_set_external_attributes(m_archive, index, 0, ZIP_OPSYS_UNIX, zip_uint32_t(mode) << modeShift)
                == 0;
        return isDone ? std::nullopt : std::optional(KRError{{}, 0, QString::fromUtf8(zip_strerror(m_archive))});
    }

    zip_t *m_archive;
    QString m_folder;
    QString m_root;
    /// Read when the archive is closed.
    std::deque<QByteArray> m_linkTargets;
};

} // namespace

std::optional<KRError> packFolder(const QString &folder, const QString &archive)
{
    int code = 0;
    // The library writes a file beside the archive, and moves it there when it is complete.
    Archive zip(zip_open(QFile::encodeName(archive).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code));
    if (!zip)
        return problem(archive, "it cannot be opened");
    FolderPacking packing(zip.get(), folder);
    const auto items = itemsIn(folder);
    for (const auto &item : items) {
        if (auto error = packing.pack(item))
            return error;
    }
    if (zip_close(zip.get()) != 0)
        return problem(archive, zip_strerror(zip.get()));
    zip.release();
    return {};
}
