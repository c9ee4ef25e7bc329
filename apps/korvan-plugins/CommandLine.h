#pragma once

#include "ExitCode.h"

/// Reads the arguments and carries out the command that they name.
ExitCode runCommandLine(int argc, char **argv);
