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

/// The whole of a file as text: UTF-8, a byte-order mark left out. Larger files than `largest` bytes are not read.
std::variant<QString, SourceTextError> readSourceText(const QString &path, qint64 largest);
