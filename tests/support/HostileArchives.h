#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// An archive that tries something, and what has to come of it in a destination that did not exist before.
struct HostileArchive
{
    enum class Result {
        /// Harmless after all: everything lies in the destination.
        Unpacked,
        /// No entry could be seen: a failure without an error.
        Unreadable,
        InvalidPath,
        CannotCreateFolders,
        LeadsOutside,
        CannotCreateFile,
        CannotDecompress
    };

    QByteArray tag;
    QByteArray bytes;
    Result result;
    /// All files and links that are then in the destination, sorted.
    QStringList left;
};

/// `outside` is the path of a folder that the archives aim at, beside the destination, with a file "kept" in it.
std::vector<HostileArchive> hostilePaths(const QByteArray &outside);
std::vector<HostileArchive> hostileLinks(const QByteArray &outside);
std::vector<HostileArchive> hostileContents();
std::vector<HostileArchive> hostileStructures();
