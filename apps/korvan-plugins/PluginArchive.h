#pragma once

#include "platform/KRError.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Packs a folder, itself included, into a zip archive at `archive`, which is replaced. The same files always give the
/// same bytes: entries are in the order of their paths, without times or owners. Nil when it is done.
std::optional<KRError> packFolder(const QString &folder, const QString &archive);
