#pragma once

#include "TestCase.h"
#include "platform/Result.h"

/// The tests of a plug-in (the files "*.test.js" in the folder "tests" in its own, at any depth), those in any other
/// folder, or the one file that is named; in the order of their paths. An error when there is no such thing.
Result<QList<TestFile>> testFilesAt(const QString &path);
