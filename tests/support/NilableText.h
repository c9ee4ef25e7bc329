#pragma once

#include <QString>
#include <QtTest>

#include <optional>

/// A text that may be nil, as tests compare it and put it into columns.
using Text = std::optional<QString>;
inline const Text nil;

Q_DECLARE_METATYPE(Text)

namespace QTest {

template <>
inline char *toString(const Text &text)
{
    return text ? toString(*text) : qstrdup("nil");
}

} // namespace QTest
