#include "updates/ArchiveExtraction.h"

#include "localization/Localizable.h"
#include "platform/ContainedFolder.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <unistd.h>

namespace {

/// False, with the text as error.
bool fail(KRError *error, const QString &text)
{
    makeDecompressError(error, text);
    return false;
}

bool writeWhole(int file, const QByteArray &data)
{
    qsizetype written = 0;
    while (written < data.size()) {
        const auto count = ::write(file, data.constData() + written, size_t(data.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
}

/// An entry of an archive, and the place where it goes.
class EntryExtraction
{
public:
    EntryExtraction(LTZipReader &reader, qsizetype index, const FolderHandle &folder, QByteArray name)
        : m_reader(reader)
        , m_index(index)
        , m_folder(folder)
        , m_name(std::move(name))
    { }

    bool extract(KRError *error) const
    {
        const bool isDone = m_reader.isSymbolicLink(m_index) ? extractLink(error) : extractFile(error);
        if (!isDone)
            m_folder.removeEntry(m_name);
        return isDone;
    }

private:
    bool extractLink(KRError *error) const
    {
        const auto target = m_reader.rawDataAtIndex(m_index);
        if (!target)
            return fail(error, Localizable::tr("Decompressing zip file failed."));
        // Deliberate: neither is it checked where the link leads, nor an error that it cannot be made.
        m_folder.makeLink(m_name, *target);
        return true;
    }

    bool extractFile(KRError *error) const
    {
        auto created = m_folder.createFile(m_name);
        if (!created) {
            const int reason = created.error().code;
            return fail(error,
                reason == EMFILE || reason == ENFILE
                    ? Localizable::tr("Could not create file handle for writing decompressed data to.")
                    : Localizable::tr("Could not create file to decompress to."));
        }
        auto file = std::move(created).value();
        const auto data = m_reader.rawDataAtIndex(m_index);
        if (!data || !writeWhole(file.get(), *data) || !file.close()) // a full disk may show only now
            return fail(error, Localizable::tr("Decompressing zip file failed."));
        return true;
    }

    LTZipReader &m_reader;
    qsizetype m_index;
    const FolderHandle &m_folder;
    QByteArray m_name;
};

/// The entries of an archive below a folder, one after another.
class ArchiveExtraction
{
public:
    ArchiveExtraction(LTZipReader &reader, FolderHandle destination, const QByteArray &path)
        : m_reader(reader)
        , m_destination(std::move(destination), path)
    { }

    bool extract(qsizetype index, KRError *error)
    {
        const auto &path = m_reader.contents().at(index);
        if (path.contains(QStringLiteral(".."))) // deliberately also inside a name
            return fail(error, Localizable::tr("Invalid file path within zip archive."));
        if (path.startsWith(QStringLiteral("__MACOSX")) || path.endsWith(u'/'))
            return true;
        return extract(index, path.toUtf8(), error);
    }

private:
    bool extract(qsizetype index, const QByteArray &path, KRError *error)
    {
        const auto slash = path.lastIndexOf('/');
        auto parent = m_destination.makeSubfolder(path.left(std::max<qsizetype>(slash, 0)));
        // An entry without a name would stand for the destination itself, whose folder is not inside it.
        if (path.isEmpty())
            parent = ContainedFolder::Failure::LeadsOutside;
        if (const auto *failure = std::get_if<ContainedFolder::Failure>(&parent))
            return fail(error, textOf(*failure));
        if (!m_destination.canHold(path))
            return fail(error, Localizable::tr("Could not create file to decompress to."));
        if (m_reader.isSymbolicLink(index))
            m_destination.forgetPaths();
        const auto folder = std::get<std::shared_ptr<const FolderHandle>>(parent);
        return EntryExtraction(m_reader, index, *folder, path.mid(slash + 1)).extract(error);
    }

    static QString textOf(ContainedFolder::Failure failure)
    {
        if (failure == ContainedFolder::Failure::LeadsOutside) {
            return Localizable::tr(
                "Can not confirm that the created intermediate folders are sub folders of the destination folder.");
        }
        return Localizable::tr("Could not create intermediate subfolders when decompressing plugin archive.");
    }

    LTZipReader &m_reader;
    ContainedFolder m_destination;
};

Result<FolderHandle> makeDestination(const QByteArray &path)
{
    if (path.isEmpty() || path.contains('\0'))
        return systemError(path.isEmpty() ? ENOENT : EINVAL);
    std::error_code failure;
    std::filesystem::create_directories(path.toStdString(), failure);
    if (failure)
        return systemError(failure.value());
    return FolderHandle::open(path);
}

} // namespace

bool decompressPluginZip(const QUrl &zip, const QUrl &folder, KRError *error)
{
    const auto path = pathFromFileURL(folder);
    auto destination = makeDestination(path);
    if (!destination) {
        if (error)
            *error = destination.error();
        return false;
    }
    const auto reader = LTZipReader::readerWithURL(zip);
    if (reader->contents().isEmpty())
        return false; // deliberately without an error
    ArchiveExtraction extraction(*reader, std::move(destination).value(), path);
    for (qsizetype index = 0; index < reader->contents().size(); ++index) {
        if (!extraction.extract(index, error))
            return false;
    }
    // Nothing could be read, but there may have been nothing but folders to pass over.
    return !reader->hasTooManyEntries() || fail(error, Localizable::tr("Decompressing zip file failed."));
}

bool decompressFile(const QString &path, LTZipReader &reader, const QUrl &target, KRError *error)
{
    const auto targetPath = pathFromFileURL(target);
    auto folder = FolderHandle::open(pathWithoutLastComponent(targetPath));
    const auto parent = folder ? std::move(folder).value() : FolderHandle();
    return EntryExtraction(reader, reader.indexOf(path), parent, lastPathComponent(targetPath)).extract(error);
}

bool makeDecompressError(KRError *error, const QString &description)
{
    if (error)
        *error = {QStringLiteral("com.veldmark.pluginmanager.updating"), 0, description};
    return true;
}
