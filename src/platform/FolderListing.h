#pragma once

#include <QByteArray>

#include <vector>

struct FolderEntry
{
    enum class Kind { File, Folder, Link, Other };

    QByteArray name;
    Kind kind = Kind::Other;
};

/// The entries of a folder but for the hidden ones (leading dot), in the file system's own order.
///
/// A folder that cannot be opened or vanishes meanwhile has no (further) entries. Links are not followed here.
std::vector<FolderEntry> visibleEntries(const QByteArray &folderPath);

/// The same with the hidden ones.
std::vector<FolderEntry> allEntries(const QByteArray &folderPath);

/// What a path leads to after all links: Folder, File, or Other for anything else and when it leads nowhere.
FolderEntry::Kind kindOfTarget(const QByteArray &path);

/// What is at a path itself: links are not followed. Other when there is nothing.
FolderEntry::Kind kindOfEntry(const QByteArray &path);

/// An entry after its links: where it leads, and to what.
struct FolderTarget
{
    QByteArray path;
    FolderEntry::Kind kind;
};

FolderTarget targetOf(const QByteArray &folderPath, const FolderEntry &entry);

/// Whether a path leads to anything, of whatever kind.
bool itemExists(const QByteArray &path);

/// Whether there is anything at the path itself, be it a link that leads nowhere.
bool hasEntry(const QByteArray &path);

/// Whether this process may execute the file, or search the folder, that a path leads to after all links. False when it
/// leads nowhere.
bool isExecutableTarget(const QByteArray &path);

/// The path with every link resolved; empty when it leads nowhere.
QByteArray resolvedPath(const QByteArray &path);
