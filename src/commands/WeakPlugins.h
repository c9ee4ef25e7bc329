#pragma once

#include <QVariant>

/// The value with every command and plug-in in it, also inside lists and dictionaries, held weakly. A command keeps
/// what its script has printed and returned; that may be the command itself or the plug-in that owns it.
QVariant withWeakPlugins(const QVariant &value);
