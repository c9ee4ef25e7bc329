#pragma once

#include <QString>

#include <optional>

/// The folder of the example plug-ins and documents that come with the program: "examples" beside it, or in the shared
/// data of its installation. Nil when they are not there.
std::optional<QString> examplesFolder();

/// The folder of the typings for plug-ins that come with the program, found in the same way.
std::optional<QString> typingsFolder();
