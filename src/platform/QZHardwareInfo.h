#pragma once

#include "platform/Export.h"

#include <QString>

/// The processor of this machine, by name. Reentrant.
class KORVAN_EXPORT QZHardwareInfo
{
public:
    /// The processor's name, such as "x86_64" or "arm64".
    static QString CPUType();
    /// How CPUType() names a 64-bit x86 processor.
    static QString intelName();
};
