#include "commands/KRPluginCommandManager.h"

KRPluginCommandManager::~KRPluginCommandManager() = default;
