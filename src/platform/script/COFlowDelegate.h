#pragma once

#include "platform/Export.h"

class COScript;

/// Who is told when a session has nothing on its stack any more after an event: a timer, a promise, a callback. Main
/// thread only.
class KORVAN_EXPORT COFlowDelegate
{
public:
    virtual ~COFlowDelegate();
    virtual void didClearEventStack(COScript *session) = 0;
};
