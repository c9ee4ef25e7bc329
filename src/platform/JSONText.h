#pragma once

#include "platform/Export.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QVariant>

/// The values of a JSON text (UTF-8, any value at the top level) as QVariantMap, QVariantList, QString, bool,
/// qlonglong, qulonglong, double and nullptr, or the parser's error. Reentrant.
KORVAN_EXPORT Result<QVariant> variantFromJSON(const QByteArray &text);

enum class JSONStyle {
    /// One line without spaces.
    Compact,
    /// One member or element a line, indented by two spaces, a line feed at the end.
    Indented
};

/// A value as JSON text in UTF-8. Ordered dictionaries keep their order; a URL becomes its absolute string; what JSON
/// cannot hold (nil, NaN, infinities, values of other types) becomes null, half of a surrogate pair U+FFFD. Reentrant.
KORVAN_EXPORT QByteArray jsonFromVariant(const QVariant &value, JSONStyle style);
