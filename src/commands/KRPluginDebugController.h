#pragma once

#include "platform/Export.h"
#include "platform/script/CODebugController.h"

/// Discards the script engine's debug output.
class KORVAN_EXPORT KRPluginDebugController final : public CODebugControllerDelegate
{
public:
    void output(const QString &, const QVariantList &) override { }
};
