#pragma once

/// What the program says to the shell.
enum class ExitCode {
    Done = 0,
    /// The operation failed, or a script logged an error.
    Failed = 1,
    WrongUsage = 2
};
