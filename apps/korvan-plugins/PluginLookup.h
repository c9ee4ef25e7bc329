#pragma once

#include "manager/KRPluginManager.h"

#include <memory>

/// An installed plug-in of that identifier, or the bundle at that path; null when there is neither.
std::shared_ptr<KRPluginBundle> findPlugin(KRPluginManager &manager, const QString &identifierOrPath);
