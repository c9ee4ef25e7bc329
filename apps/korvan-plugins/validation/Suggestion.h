#pragma once

#include <QString>
#include <QStringList>

/// The name among those that are known that was probably meant; "" when none is near, and when there are thousands.
QString nearestName(const QString &name, const QStringList &known);

/// " Do you mean “…”?", or "" when none is near.
QString suggestion(const QString &name, const QStringList &known);
