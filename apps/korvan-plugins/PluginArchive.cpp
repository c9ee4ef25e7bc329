#include "PluginArchive.h"

#include "ArchiveContent.h"
#include "platform/ControlCharacters.h"
#include "platform/archive/ZipBudget.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>

#include <cerrno>
#include <climits>
#include <cstdio>
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

KRError notWritten(const QString &reason)
{
    return {{}, 0, QStringLiteral("The archive cannot be written: %1.").arg(reason)};
}

class FolderPacking
{
public:
    /// Those of `stored` are not compressed.
    FolderPacking(zip_t *archive, const QString &folder, const QSet<QString> &stored)
        : m_archive(archive)
        , m_stored(stored)
        , m_folder(folder)
        , m_root(QFileInfo(folder).fileName() + u'/')
    { }

    /// Nil when it is packed.
    std::optional<KRError> pack(const QString &path)
    {
        const QFileInfo item(m_folder + u'/' + path);
        if ((m_root + path).contains(u".."))
            return refusal(path, "has two dots in a row in its name, which hosts do not unpack");
        if (hasControlCharacter(m_root + path))
            return refusal(path, "has control characters in its name");
        if (item.isSymLink())
            return packLink(path);
        if (item.isDir())
            return item.isReadable() ? std::nullopt : std::optional(refusal(path, "cannot be read"));
        if (!item.isFile())
            return refusal(path, "is neither a file nor a folder");
        if (!item.isReadable())
            return refusal(path, "cannot be read");
        if (quint64(item.size()) > ZipBudget().entrySize)
            return refusal(path, "is larger than hosts unpack");
        return packFile(path, item.permission(QFile::ExeOwner));
    }

private:
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
        const bool isStored = entry >= 0 && m_stored.contains(m_root + path);
        if (isStored && zip_set_file_compression(m_archive, zip_uint64_t(entry), ZIP_CM_STORE, 0) != 0)
            return libraryError();
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
        return isDone ? std::nullopt : std::optional(libraryError());
    }

    KRError libraryError() const { return {{}, 0, QString::fromUtf8(zip_strerror(m_archive))}; }

    zip_t *m_archive;
    const QSet<QString> &m_stored;
    QString m_folder;
    QString m_root;
    /// Read when the archive is closed.
    std::deque<QByteArray> m_linkTargets;
};

std::optional<KRError> writeArchive(
    const QString &folder, const QStringList &items, const QSet<QString> &stored, const QString &archive)
{
    int code = 0;
    Archive zip(zip_open(QFile::encodeName(archive).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code));
    if (!zip)
        return notWritten(QStringLiteral("it cannot be opened"));
    FolderPacking packing(zip.get(), folder, stored);
    for (const auto &item : items) {
        if (auto error = packing.pack(item))
            return error;
    }
    if (zip_close(zip.get()) != 0)
        return notWritten(QString::fromUtf8(zip_strerror(zip.get())));
    zip.release();
    return {};
}

/// The entries that hosts take for an attack, so small have they become.
QSet<QString> entriesTooWellPacked(const QString &archive)
{
    constexpr ZipBudget budget;
    QSet<QString> paths;
    Archive zip(zip_open(QFile::encodeName(archive).constData(), ZIP_RDONLY, nullptr));
    const auto count = zip ? zip_get_num_entries(zip.get(), 0) : 0;
    for (zip_int64_t index = 0; index < count; ++index) {
        zip_stat_t entry;
        const bool isTooWellPacked = zip_stat_index(zip.get(), zip_uint64_t(index), 0, &entry) == 0
            && entry.size > budget.sizeOfAnyRatio && entry.size / budget.ratio >= entry.comp_size;
        if (isTooWellPacked)
            paths.insert(QString::fromUtf8(entry.name));
    }
    return paths;
}

/// What stands in the way of a file at that path: it would be replaced.
bool isTaken(const QString &path)
{
    const QFileInfo there(path);
    return there.exists() && !there.isFile();
}

} // namespace

std::optional<KRError> packFolder(const QString &folder, const QString &archive)
{
    const auto items = itemsToPack(folder);
    if (!items)
        return items.error();
    if (isTaken(archive))
        return notWritten(QStringLiteral("something else than a file is at \"%1\"").arg(archive));
    // Nothing comes to its place before hosts have been seen to unpack it.
    const QTemporaryDir work(QFileInfo(archive).path() + QStringLiteral("/.pack-XXXXXX"));
    if (!work.isValid())
        return notWritten(work.errorString());
    const auto made = work.filePath(QStringLiteral("archive.zip"));
    auto error = writeArchive(folder, items.value(), {}, made);
    const auto stored = error ? QSet<QString>() : entriesTooWellPacked(made);
    if (!stored.isEmpty())
        error = writeArchive(folder, items.value(), stored, made);
    if (!error)
        error = flawOfArchive(made);
    if (!error && std::rename(QFile::encodeName(made).constData(), QFile::encodeName(archive).constData()) != 0)
        error = notWritten(qt_error_string(errno));
    return error;
}
