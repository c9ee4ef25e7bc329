#include "platform/FileWrapper.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderHandle.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// Which entry failed, seen from the top, and why.
struct Failure
{
    QByteArray path;
    int number = 0;
};
using Outcome = std::optional<Failure>;

Outcome below(const QByteArray &name, Failure failure)
{
    failure.path = failure.path.isEmpty() ? name : name + '/' + failure.path;
    return failure;
}

KRError errorOf(const Failure &failure)
{
    auto error = systemError(failure.number);
    if (!failure.path.isEmpty()) {
        error.localizedDescription =
            QStringLiteral("%1: %2").arg(displayPath(failure.path), error.localizedDescription);
    }
    return error;
}

Outcome findBadName(const FileWrapper &folder)
{
    for (const auto &child : folder.fileWrappers()) {
        const auto name = child.preferredFilename().toUtf8();
        if (!isSingleName(name))
            return Failure{'"' + name + '"', EINVAL};
        if (const auto failure = findBadName(child))
            return below(name, *failure);
    }
    return {};
}

int writeAll(int file, const QByteArray &bytes)
{
    for (qsizetype written = 0; written < bytes.size();) {
        const auto count = ::write(file, bytes.constData() + written, size_t(bytes.size() - written));
        if (count < 0 && errno != EINTR)
            return errno;
        written += std::max<ssize_t>(count, 0);
    }
    return 0;
}

/// What is made is new: an entry that exists is neither followed nor touched.
Outcome writeEntry(int parent, const QByteArray &name, const FileWrapper &wrapper);

Outcome writeFile(int parent, const QByteArray &name, const QByteArray &contents)
{
    constexpr mode_t usualFile = 0666;
    FileDescriptor file(
        ::openat(parent, name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, usualFile));
    if (!file.isOpen())
        return Failure{{}, errno};
    int number = writeAll(file.get(), contents);
    if (!file.close() && number == 0)
        number = errno;
    if (number == 0)
        return {};
    ::unlinkat(parent, name.constData(), 0);
    return Failure{{}, number};
}

/// Takes back what was written. What others have put into a folder meanwhile stays, and so does the folder.
void removeEntry(int parent, const QByteArray &name, const FileWrapper &wrapper)
{
    if (wrapper.kind() == FileWrapper::Kind::RegularFile) {
        ::unlinkat(parent, name.constData(), 0);
        return;
    }
    {
        const FileDescriptor folder(::openat(parent, name.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!folder.isOpen())
            return;
        for (const auto &child : wrapper.fileWrappers())
            removeEntry(folder.get(), child.preferredFilename().toUtf8(), child);
    }
    ::unlinkat(parent, name.constData(), AT_REMOVEDIR);
}

Outcome writeChildren(int folder, const std::vector<FileWrapper> &children)
{
    for (auto child = children.begin(); child != children.end(); ++child) {
        const auto name = child->preferredFilename().toUtf8();
        const auto failure = writeEntry(folder, name, *child);
        if (!failure)
            continue;
        for (auto written = children.begin(); written != child; ++written)
            removeEntry(folder, written->preferredFilename().toUtf8(), *written);
        return below(name, *failure);
    }
    return {};
}

Outcome writeFolder(int parent, const QByteArray &name, const std::vector<FileWrapper> &children)
{
    constexpr mode_t usualFolder = 0777;
    if (::mkdirat(parent, name.constData(), usualFolder) != 0)
        return Failure{{}, errno};
    if (children.empty())
        return {};
    Outcome failure;
    if (const FileDescriptor folder(::openat(parent, name.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        folder.isOpen())
        failure = writeChildren(folder.get(), children);
    else
        failure = Failure{{}, errno};
    if (failure)
        ::unlinkat(parent, name.constData(), AT_REMOVEDIR);
    return failure;
}

Outcome writeEntry(int parent, const QByteArray &name, const FileWrapper &wrapper)
{
    return wrapper.kind() == FileWrapper::Kind::Folder ? writeFolder(parent, name, wrapper.fileWrappers())
                                                       : writeFile(parent, name, wrapper.regularFileContents());
}

} // namespace

FileWrapper::FileWrapper(Kind kind, const QString &preferredFilename, const QByteArray &contents)
    : m_kind(kind)
    , m_preferredFilename(preferredFilename)
    , m_contents(contents)
{ }

FileWrapper FileWrapper::regularFile(const QString &preferredFilename, const QByteArray &contents)
{
    return {Kind::RegularFile, preferredFilename, contents};
}

FileWrapper FileWrapper::folder(const QString &preferredFilename)
{
    return {Kind::Folder, preferredFilename, {}};
}

const FileWrapper *FileWrapper::fileWrapperNamed(const QString &name) const
{
    if (!m_names.contains(name))
        return nullptr;
    const auto found = std::find_if(m_children.begin(), m_children.end(),
        [&name](const FileWrapper &child) { return child.preferredFilename() == name; });
    return &*found;
}

bool FileWrapper::addFileWrapper(FileWrapper child)
{
    if (m_kind != Kind::Folder || m_names.contains(child.preferredFilename()))
        return false;
    m_names.insert(child.preferredFilename());
    m_children.push_back(std::move(child));
    return true;
}

std::optional<KRError> FileWrapper::writeToURL(const QUrl &url) const
{
    const auto path = pathFromFileURL(url);
    if (path.isEmpty() || path.contains('\0'))
        return systemError(EINVAL);
    auto failure = findBadName(*this);
    if (!failure)
        failure = writeEntry(AT_FDCWD, path, *this);
    return failure ? std::optional(errorOf(*failure)) : std::nullopt;
}
