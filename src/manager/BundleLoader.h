#pragma once

#include "bundles/KRPluginBundle.h"
#include "platform/LogMessages.h"

#include <QByteArray>

#include <memory>
#include <vector>

/// A bundle as it was loaded, null when it could not be, and what there is to say about it.
struct LoadedBundle
{
    std::shared_ptr<KRPluginBundle> bundle;
    std::vector<LogMessages::Message> messages;
};

/// Loads bundles on all processors at once and answers them in the order of the paths. Nothing but the files is touched
/// from other threads; all of them have ended when this returns. Main thread only.
std::vector<LoadedBundle> loadBundles(const std::vector<QByteArray> &paths);
