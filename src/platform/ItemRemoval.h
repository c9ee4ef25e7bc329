#pragma once

#include "platform/KRError.h"

#include <QByteArray>

#include <optional>

/// Removes a file, a link, or a folder with everything in it. Links are not followed; folders that forbid it are
/// allowed to be changed first. Nil when it is gone, or was not there. Others may remove it at the same time.
std::optional<KRError> removeItem(const QByteArray &path);
