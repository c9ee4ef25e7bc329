#include "platform/script/ScriptObject.h"

ScriptObject::~ScriptObject() = default;
