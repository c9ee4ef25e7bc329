#include "platform/archive/LTZipReader.h"

#include "platform/FileDescriptor.h"
#include "platform/FileURL.h"
#include "platform/UTF8.h"
#include "platform/archive/ZipSoundness.h"

#include <QHash>

#include <fcntl.h>
#include <zip.h>

namespace {

struct ArchiveCloser
{
    void operator()(zip_t *archive) const { ::zip_discard(archive); }
};
using ArchiveHandle = std::unique_ptr<zip_t, ArchiveCloser>;

struct EntryCloser
{
    void operator()(zip_file_t *file) const { ::zip_fclose(file); }
};
using EntryHandle = std::unique_ptr<zip_file_t, EntryCloser>;

KRError zipError(const QString &text)
{
    return {QStringLiteral("zip"), 0, text};
}

FileDescriptor openArchive(const QUrl &url)
{
    const auto path = pathFromFileURL(url);
    if (path.isEmpty() || path.contains('\0'))
        return FileDescriptor();
    return FileDescriptor(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // no waiting for a pipe
}

ArchiveHandle openWithLibrary(int file)
{
    const int own = ::fcntl(file, F_DUPFD_CLOEXEC, 0);
    int ignored = 0;
    ArchiveHandle archive(own < 0 ? nullptr : ::zip_fdopen(own, 0, &ignored));
    if (!archive && own >= 0)
        ::close(own);
    return archive;
}

/// The library chooses and reads the directory by itself: that it has found the same one is asked, not assumed.
bool isSameEntry(zip_t *archive, zip_uint64_t index, const ZipEntry &entry)
{
    zip_stat_t status;
    if (::zip_stat_index(archive, index, 0, &status) != 0)
        return false;
    constexpr zip_uint64_t wanted = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD;
    return (status.valid & wanted) == wanted && status.size == entry.size && status.comp_size == entry.packedSize
        && status.crc == entry.checksum && status.comp_method == entry.method;
}

/// Nil when the path is marked as UTF-8 without being it. A path that is in no way marked is taken for UTF-8 when it
/// can be, as most programs write it, or else for code page 437.
std::optional<QString> pathOf(zip_t *archive, zip_uint64_t index, const ZipEntry &entry)
{
    const bool isCut = !archive || entry.name.contains('\0'); // the library ends a path at a zero
    const auto bytes = isCut ? entry.name : QByteArray(::zip_get_name(archive, index, ZIP_FL_ENC_RAW));
    if (isValidUTF8(bytes))
        return QString::fromUtf8(bytes);
    if (isCut)
        return std::nullopt;
    const QByteArray converted(::zip_get_name(archive, index, ZIP_FL_ENC_STRICT));
    return isValidUTF8(converted) ? std::optional(QString::fromUtf8(converted)) : std::nullopt;
}

/// All `size` bytes and then the end, where the library compares the checksum.
bool readWhole(zip_file_t *file, QByteArray &data)
{
    qsizetype filled = 0;
    while (filled < data.size()) {
        const auto count = ::zip_fread(file, data.data() + filled, zip_uint64_t(data.size() - filled));
        if (count <= 0)
            return false;
        filled += count;
    }
    char further = 0;
    return ::zip_fread(file, &further, 1) == 0;
}

} // namespace

struct LTZipReader::Archive
{
    bool open(const QUrl &url, const ZipBudget &budget);
    bool readPaths();

    FileDescriptor file;
    ZipDirectory directory;
    ArchiveHandle handle;
    QStringList paths;
    QHash<QString, qsizetype> indices;
};

bool LTZipReader::Archive::open(const QUrl &url, const ZipBudget &budget)
{
    file = openArchive(url);
    auto found = readZipDirectory(file.get(), budget);
    if (!found)
        return false;
    directory = std::move(*found);
    refuseUnsoundEntries(directory, file.get(), budget);
    if (!directory.isWithinBudget)
        return true; // the library would read the whole of it
    handle = openWithLibrary(file.get());
    return handle && zip_uint64_t(::zip_get_num_entries(handle.get(), 0)) == directory.entries.size();
}

bool LTZipReader::Archive::readPaths()
{
    zip_uint64_t index = 0;
    for (auto &entry : directory.entries) {
        if (handle && !isSameEntry(handle.get(), index, entry))
            entry.state = ZipEntry::State::Refused;
        auto path = pathOf(handle.get(), index, entry);
        if (!path)
            return false;
        indices.insert(*path, qsizetype(index));
        paths.append(std::move(*path));
        ++index;
    }
    return true;
}

std::unique_ptr<LTZipReader> LTZipReader::readerWithURL(const QUrl &url, const ZipBudget &budget)
{
    auto archive = std::make_unique<Archive>();
    if (!archive->open(url, budget) || !archive->readPaths())
        archive = std::make_unique<Archive>();
    return std::unique_ptr<LTZipReader>(new LTZipReader(std::move(archive)));
}

LTZipReader::LTZipReader(std::unique_ptr<Archive> archive)
    : m_archive(std::move(archive))
{ }

LTZipReader::~LTZipReader() = default;

const QStringList &LTZipReader::contents() const
{
    return m_archive->paths;
}

bool LTZipReader::hasTooManyEntries() const
{
    return !m_archive->directory.isWithinBudget;
}

qsizetype LTZipReader::indexOf(const QString &path) const
{
    return m_archive->indices.value(path, -1);
}

bool LTZipReader::isSymbolicLink(const QString &path) const
{
    return isSymbolicLink(indexOf(path));
}

bool LTZipReader::isSymbolicLink(qsizetype index) const
{
    return index >= 0 && index < contents().size() && m_archive->directory.entries[std::size_t(index)].isSymbolicLink();
}

std::optional<QByteArray> LTZipReader::rawDataAtSubpath(const QString &path, KRError *error)
{
    return rawDataAtIndex(indexOf(path), error);
}

std::optional<QByteArray> LTZipReader::rawDataAtIndex(qsizetype index, KRError *error)
{
    const auto fail = [error](const QString &text) {
        if (error)
            *error = zipError(text);
        return std::nullopt;
    };
    if (index < 0 || index >= contents().size())
        return fail(QStringLiteral("The archive has no such entry."));
    const auto &entry = m_archive->directory.entries[std::size_t(index)];
    if (entry.state == ZipEntry::State::Refused)
        return fail(QStringLiteral("The archive's entry is damaged, too large or of an unknown kind."));
    auto *const archive = m_archive->handle.get();
    const EntryHandle file(::zip_fopen_index(archive, zip_uint64_t(index), 0));
    if (!file)
        return fail(QString::fromUtf8(::zip_strerror(archive)));
    QByteArray data(qsizetype(entry.size), Qt::Uninitialized);
    if (!readWhole(file.get(), data))
        return fail(QString::fromUtf8(::zip_file_strerror(file.get())));
    return data;
}
