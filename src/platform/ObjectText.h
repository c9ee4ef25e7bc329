#pragma once

#include <QString>

#include <optional>

/// An object as debugging texts name it: "<KRPluginBundle: 0x55d0>".
inline QString objectText(const char *className, const void *object)
{
    return QStringLiteral("<%1: 0x%2>")
        .arg(QLatin1String(className), QString::number(reinterpret_cast<quintptr>(object), 16));
}

/// A text that may be nil, as messages show it.
inline QString textOrNull(const std::optional<QString> &text)
{
    return text.value_or(QStringLiteral("(null)"));
}
