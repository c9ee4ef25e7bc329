#pragma once

#include <QProcess>

#include <csignal>

#include <sys/prctl.h>

/// Ends the program that is going to be started when the thread that starts it ends, however that happens.
///
/// It also makes the child a copy of the parent from the beginning. Without it the two share their memory for a moment,
/// and ThreadSanitizer then takes the parent for the child, which may not start threads.
inline void endWithThisThread(QProcess &process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}
