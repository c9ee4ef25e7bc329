#pragma once

#include <functional>

/// What a download of the vendor's blocklist has brought.
struct BlocklistUpdate
{
    /// Whether a list came that differs from the one before, and was kept.
    bool hasNewList = false;
    /// How many installed plug-ins it newly disables.
    unsigned newlyDisabled = 0;
};

/// Called on the network thread at the end of a download, whatever came of it, also when its owner ends before.
using BlocklistUpdateHandler = std::function<void(const BlocklistUpdate &)>;
