#pragma once

#include "platform/script/ScriptHost.h"

/// Services about the process that scripts run in, and the computer that it runs on, for the modules "process", "os"
/// and "performance". Each is a dictionary: what does not change as a value, the rest as functions. Main thread.

/// "version" (the application's), "platform", "arch", "pid", "ppid", "execPath", "script" (the path of the session's
/// script), "env" (a copy), and the functions "cwd", "memoryUsage" and "write" (logs a text).
QVariant processService(const std::shared_ptr<ScriptHost> &host);

/// "hostname", "type", "release", "machine", "version", "homedir", "tmpdir", "username", "shell", "uid", "gid",
/// "endianness", "cpus", "totalmem" (bytes), and the functions "freemem" (bytes), "uptime" (seconds) and "loadavg".
QVariant systemService(const std::shared_ptr<ScriptHost> &host);

/// "timeOrigin" (milliseconds since 1970 at the session's first use of it) and the functions "now" (milliseconds since
/// then), "nanoseconds" (a text, since any moment) and "alarm" (calls a function once after so many milliseconds;
/// unlike a timer, it keeps no session running): a clock that nothing sets back.
QVariant clockService(const std::shared_ptr<ScriptHost> &host);
