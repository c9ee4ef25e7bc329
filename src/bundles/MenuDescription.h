#pragma once

#include "commands/CommandTable.h"

#include <QString>
#include <QVariantMap>

#include <optional>

/// How a plug-in without a "menu" of its own appears in the menu: a submenu of its name (the localized "untitled
/// script" without one) with every command that has a run handler, in order.
QVariantMap defaultMenuDescription(const std::optional<QString> &pluginName, const CommandTable &commands);

/// The localized "untitled script".
QString untitledScriptTitle();
