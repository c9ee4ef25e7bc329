#pragma once

#include "platform/Export.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QVariant>

/// The value of a property list, XML or binary: dictionaries as QVariantMap, arrays as QVariantList, texts, booleans,
/// whole numbers as qlonglong, others as double, bytes as QByteArray, dates as QDateTime in UTC. What is no property
/// list, or one that is nested or repeats its parts beyond all use, is an error. Reentrant.
KORVAN_EXPORT Result<QVariant> variantFromPropertyList(const QByteArray &bytes);

/// A value of these kinds as a property list in XML. An error when it holds anything else (nil among it), or a text
/// with a zero character, which property lists cannot carry. Reentrant.
KORVAN_EXPORT Result<QByteArray> propertyListFromVariant(const QVariant &value);
