#include "commands/KRPluginCommandManager.h"

KRPluginCommandManager::~KRPluginCommandManager() = default;

DataSuppliers *KRPluginCommandManager::dataSuppliers()
{
    return nullptr;
}
