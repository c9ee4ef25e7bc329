#pragma once

#include <functional>

// A child process that is killed at a chosen moment, the same one on each run: moments are counted in entries into and
// returns from calls of the system, the only ones that change anything outside of a process.

/// How many moments the work has, when it runs to its end.
int momentsOf(const std::function<void()> &work);

/// Runs the work in a child process and kills it (kill -9) at that moment, counted from 0.
void runAndKillAt(int moment, const std::function<void()> &work);
