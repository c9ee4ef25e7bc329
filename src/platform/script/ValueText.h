#pragma once

#include "platform/Export.h"

#include <QString>
#include <QVariant>

/// A value as text for people and logs: a text as it stands, nil as "(null)", numbers and booleans as JavaScript
/// writes them, lists and dictionaries in JSON's notation on one line, anything else by its own description. A text
/// that grows beyond ten million characters is cut off.
KORVAN_EXPORT QString descriptionOfValue(const QVariant &value);
