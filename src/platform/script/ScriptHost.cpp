#include "platform/script/ScriptHost.h"

ScriptHost::~ScriptHost() = default;

ScriptHosting::~ScriptHosting() = default;
