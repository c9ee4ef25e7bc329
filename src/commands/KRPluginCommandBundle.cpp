#include "commands/KRPluginCommandBundle.h"

KRPluginCommandBundle::~KRPluginCommandBundle() = default;
