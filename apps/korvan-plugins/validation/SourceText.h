#pragma once

#include "validation/TextPosition.h"

#include <QString>

#include <variant>

/// Why a file is no text, and where.
struct SourceTextError
{
    QString message;
    TextPosition position;
};

/// The whole of a file as text: UTF-8, a byte-order mark left out. Larger files than `largest` bytes are not read, and
/// neither are pipes and devices, which never end.
std::variant<QString, SourceTextError> readSourceText(const QString &path, qint64 largest);
