#include "updates/KRPluginUpdater.h"

KRPluginUpdater::~KRPluginUpdater() = default;
