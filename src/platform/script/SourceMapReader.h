#pragma once

#include "platform/script/SourceMap.h"

#include <QByteArray>

#include <optional>

/// Nil for anything that is no source map of version 3, also for one that is damaged only in part.
std::optional<SourceMap> sourceMapFromJSON(const QByteArray &json);
