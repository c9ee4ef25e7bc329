#pragma once

#include "bundles/PluginTable.h"

/// Lets go of the plug-ins of a registry that was replaced. Freeing what thousands of them hold takes a third of the
/// time that loading them took, so it is done on all processors at once; what belongs to the main thread, the sessions
/// of commands above all, is left to the calling thread. No other thread is left when it returns.
void disposeOf(PluginTable plugins);
