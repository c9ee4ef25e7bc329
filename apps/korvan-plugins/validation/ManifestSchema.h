#pragma once

#include "validation/Manifest.h"

/// Compares a manifest with docs/schemas/manifest.schema.json, which is compiled in: keys that it does not have, keys
/// that come twice, types, ranges, patterns.
void checkSchema(Manifest &manifest);
