#include "state/KRPluginManagingState.h"

KRPluginManagingState::~KRPluginManagingState() = default;
