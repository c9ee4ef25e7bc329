#pragma once

#include "platform/archive/ZipDirectory.h"

/// Refuses the entries that break a budget, whose own header says something else than the directory, whose data lies in
/// another entry's or nowhere, and those that are encrypted or packed by a method that is neither "stored" nor
/// "deflated". Looks at everything but the packed data.
void refuseUnsoundEntries(ZipDirectory &directory, int file, const ZipBudget &budget);
