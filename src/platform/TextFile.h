#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The whole of a file as text, in the encoding that it names with its first bytes, else in UTF-8 where it is that,
/// else in Latin-1; nil when it cannot be read. Reentrant.
std::optional<QString> readTextFile(const QByteArray &path);
