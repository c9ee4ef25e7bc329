#pragma once

#include <QByteArray>
#include <QTemporaryDir>

// Files under names of any bytes, which QFile cannot write. Each failure fails the program: no test makes sense without
// its files.

/// A temporary folder that goes with everything in it, whatever its name.
class TemporaryFolder
{
public:
    TemporaryFolder() = default;
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    QByteArray path() const { return m_folder.path().toUtf8(); }
    QByteArray path(const QByteArray &relativePath) const { return path() + '/' + relativePath; }

private:
    QTemporaryDir m_folder;
};

/// With the folders on the way to it.
void writeFileAt(const QByteArray &path, const QByteArray &content);
/// With the folders on the way to it; one that exists stays.
void makeFolderAt(const QByteArray &path);
/// A symbolic link at `path` that says `target`, whether or not that leads anywhere.
void makeLinkAt(const QByteArray &path, const QByteArray &target);
/// A named pipe, which nobody writes into.
void makePipeAt(const QByteArray &path);
/// A socket's name, with nobody behind it.
void makeSocketAt(const QByteArray &path);
/// Over what is there, if the system allows it.
void renameAt(const QByteArray &from, const QByteArray &to);
/// A file, or a folder with everything in it.
void removeAt(const QByteArray &path);
