#pragma once

#include "Output.h"
#include "state/IncompatibleVersions.h"

#include <QVariant>

/// The list of versions that do not work as the documents of this program hold it.
QVariant describeVersions(const IncompatibleVersions &versions);

/// The same for people.
void printVersions(const IncompatibleVersions &versions, Output &output);
