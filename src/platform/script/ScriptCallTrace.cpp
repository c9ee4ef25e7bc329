#include "platform/script/ScriptCallTrace.h"

namespace {

ScriptCallObserver *currentObserver = nullptr;

} // namespace

ScriptCallObserver::ScriptCallObserver()
{
    currentObserver = this;
}

ScriptCallObserver::~ScriptCallObserver()
{
    if (currentObserver == this)
        currentObserver = nullptr;
}

ScriptCallObserver *ScriptCallObserver::current()
{
    return currentObserver;
}
