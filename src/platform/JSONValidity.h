#pragma once

#include <QStringView>
#include <QVariant>

/// Whether a text, a key too, can be written as JSON and read back as it was: half of a surrogate pair cannot.
bool isValidJSONText(QStringView text);

/// Whether a value can be written as JSON and read back as it was: null, booleans, finite numbers and texts, in lists
/// and dictionaries that are not nested beyond all use. Nil, dates, bytes and everything that lives in a script are
/// none.
bool isValidJSONValue(const QVariant &value);
