#pragma once

#include "platform/Export.h"

#include <cstddef>
#include <functional>

/// How many threads are worth their start for so many items, of which a thread should have at least
/// `itemsWorthAThread`. At least one, the calling one.
KORVAN_EXPORT std::size_t threadsFor(std::size_t items, std::size_t itemsWorthAThread);

/// Calls `work` with each number below `threads`, each on a thread of its own, 0 on the calling one. All have ended
/// when it returns.
KORVAN_EXPORT void runInParallel(std::size_t threads, const std::function<void(std::size_t number)> &work);
