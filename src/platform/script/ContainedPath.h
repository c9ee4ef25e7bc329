#pragma once

#include <QByteArray>

#include <filesystem>

/// Whether a path is below a folder, as both are written.
inline bool isContainedPath(const QByteArray &path, const QByteArray &folder)
{
    return path.startsWith(folder.endsWith('/') ? folder : folder + '/');
}

/// The path without "." and "..", as it is written: no link is followed.
inline QByteArray normalizedPath(const QByteArray &path)
{
    return QByteArray::fromStdString(std::filesystem::path(path.toStdString()).lexically_normal().string());
}
