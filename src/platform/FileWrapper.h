#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

/// A file, or a folder with everything in it, before it is on a disk. A plain value.
///
/// Names may be any texts, such as strangers chose them: writeToURL() refuses those that are none for a single file.
class KORVAN_EXPORT FileWrapper
{
public:
    enum class Kind { RegularFile, Folder };

    /// A file of these bytes. `preferredFilename` is its name in the folder that it is added to.
    static FileWrapper regularFile(const QString &preferredFilename, const QByteArray &contents);
    /// A folder, empty as yet.
    static FileWrapper folder(const QString &preferredFilename);

    Kind kind() const { return m_kind; }
    const QString &preferredFilename() const { return m_preferredFilename; }
    /// Empty for a folder.
    const QByteArray &regularFileContents() const { return m_contents; }
    /// What the folder holds, in the order in which it was added. Nothing for a file.
    const std::vector<FileWrapper> &fileWrappers() const { return m_children; }
    /// The entry of that name; null when there is none. Valid until another one is added.
    const FileWrapper *fileWrapperNamed(const QString &name) const;

    /// Puts an entry into the folder. False, with nothing changed, when there is one of its name already, and for a
    /// file.
    bool addFileWrapper(FileWrapper child);

    /// Writes the file or the folder at a file URL, whatever the preferred name; names below it are in UTF-8. Nil when
    /// all of it was written.
    ///
    /// What is at the URL stays as it is: there, only something new is made, so it is an error (EEXIST) when anything
    /// is, be it a link that leads nowhere. Nor is the folder around it made. Names that are none for a single file
    /// (empty, "." and "..", with a slash or a zero) are an error (EINVAL) before anything is written, so nothing is
    /// ever written elsewhere. Of a tree that cannot be written to its end, all that was made is removed again. Not
    /// atomic: others see it grow. Any thread.
    [[nodiscard]] std::optional<KRError> writeToURL(const QUrl &url) const;

private:
    FileWrapper(Kind kind, const QString &preferredFilename, const QByteArray &contents);

    Kind m_kind;
    QString m_preferredFilename;
    QByteArray m_contents;
    std::vector<FileWrapper> m_children;
    QSet<QString> m_names;
};
