#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QUrl>

/// File paths and their URLs.
///
/// A path is bytes, as the file system keeps it: names that are not UTF-8 survive the way into a URL and back. A
/// folder's URL ends in "/", a path never does (but for the root).
enum class FileKind { File, Folder };

/// The URL of a path; the bytes that a URL cannot hold, and those that are not ASCII, are percent-encoded. A relative
/// path is taken from the current folder; an empty one has no URL.
QUrl fileURLFromPath(const QByteArray &path, FileKind kind);

/// The same for a path that came as text.
QUrl fileURLFromPath(const QString &path, FileKind kind);

/// The path of a file URL, without a trailing slash; empty for an empty URL and one that is not a local file's (another
/// scheme, another computer).
QByteArray pathFromFileURL(const QUrl &url);

/// The path as text for people: bytes that are not UTF-8 show as replacement characters.
QString displayPath(const QByteArray &path);
QString displayPath(const QUrl &url);

/// The URL as text, every special character percent-encoded.
KORVAN_EXPORT QString absoluteString(const QUrl &url);

/// `parent` with `component` below it. The component may itself hold slashes.
QByteArray pathByAppending(const QByteArray &parent, QByteArrayView component);

QByteArray lastPathComponent(const QByteArray &path);
QByteArray pathWithoutLastComponent(const QByteArray &path);
/// The name up to its last dot; a leading dot begins no extension.
QString withoutExtension(const QString &name);
QByteArray withoutExtension(const QByteArray &name);
/// Whether the path's last component ends in the extension, whatever its case.
bool hasExtension(const QByteArray &path, QByteArrayView extension);
