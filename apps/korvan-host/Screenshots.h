#pragma once

struct HostOptions;

/// Writes pictures of the program's windows, light and dark, into the folder that the options name. Answers the exit
/// code.
int writeScreenshots(const HostOptions &options);
