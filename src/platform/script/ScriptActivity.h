#pragma once

#include "platform/Export.h"

#include <QString>

#include <memory>

/// Something that scripts do for one reason: a run of a command, with everything that its timers and promises do later,
/// until the same session is used for another run.
struct ScriptActivity
{
    /// In the user's words: the command's name.
    QString name;
};

/// The same activity is the same pointer.
using ScriptActivityPointer = std::shared_ptr<const ScriptActivity>;

/// Why scripts are running now; null when none is. Where one script has caused another to run, the first one's: whoever
/// takes back what the first has done takes back all of it. Main thread only.
KORVAN_EXPORT ScriptActivityPointer currentScriptActivity();
