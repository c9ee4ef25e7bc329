#pragma once

#include "support/TestEnvironment.h"

/// Lets the library read the folder events that the system holds by now.
void readFolderEvents();

/// The same, then lets the time pass after which it tells of changes.
void letFoldersSettle(TestEnvironment &environment);
