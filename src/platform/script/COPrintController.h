#pragma once

#include "platform/Export.h"
#include "platform/script/ScriptException.h"

#include <QVariant>

/// Who takes what a session's script prints, and is told when it raises an exception. Main thread only.
class KORVAN_EXPORT COPrintController
{
public:
    virtual ~COPrintController();

    /// `print:`. Any value; an error that nobody else is told about comes as a ready-made log entry: a dictionary with
    /// "level" = "error", "stringValue" and "payload".
    virtual void print(const QVariant &value) = 0;
    /// `scriptEncounteredException:`. Comes once for each exception that leaves the script.
    virtual void scriptEncounteredException(const ScriptException &exception) = 0;
};
