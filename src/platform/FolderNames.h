#pragma once

#include "platform/Result.h"

#include <QByteArray>

#include <vector>

/// Opens a folder by its name in another open one (or AT_FDCWD); a link is not followed. A negative number, with the
/// reason in errno, when there is none. The caller closes it.
[[nodiscard]] int openFolder(int parent, const char *name);

/// The names of everything in an open folder, hidden entries included.
Result<std::vector<QByteArray>> namesInFolder(int folder);
