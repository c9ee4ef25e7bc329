#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Result.h"

#include <QByteArray>

#include <optional>

/// Whether it names something in a folder, and nothing elsewhere: no slash or zero in it, not empty, not "." or "..".
bool isSingleName(const QByteArray &name);

/// An open folder. What is done through it happens in that very folder, wherever its path may lead by now.
///
/// Names are single components; each operation refuses one with a slash or a zero in it, an empty one, "." and "..".
class FolderHandle
{
public:
    enum class Links { Follow, Refuse };

    /// No folder: every operation fails.
    FolderHandle() = default;
    /// Takes the descriptor of an open folder.
    explicit FolderHandle(FileDescriptor descriptor);
    /// Follows links.
    static Result<FolderHandle> open(const QByteArray &path);

    Result<FolderHandle> openFolder(const QByteArray &name, Links links) const;
    /// Nil too when something of that name exists already.
    std::optional<KRError> makeFolder(const QByteArray &name) const;
    /// A new, empty file for writing, with the attributes that new files have. What is there is replaced: a link
    /// itself, never what it leads to, and never the content of a file that has another name elsewhere. A folder stays
    /// (EISDIR).
    Result<FileDescriptor> createFile(const QByteArray &name) const;
    /// A symbolic link, in the place of whatever is there but a folder.
    std::optional<KRError> makeLink(const QByteArray &name, const QByteArray &target) const;
    /// Anything but a folder.
    std::optional<KRError> removeEntry(const QByteArray &name) const;

    /// Whether this folder is the other one or lies below it, asked of the real folders on the way up.
    bool isInside(const FolderHandle &other) const;

    int descriptor() const { return m_descriptor.get(); }

private:
    template <class Make>
    int makeInPlaceOf(const QByteArray &name, Make make) const;

    FileDescriptor m_descriptor;
};
