#pragma once

#include <QHash>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <tsl/ordered_map.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

struct QStringHasher
{
    std::size_t operator()(const QString &key) const noexcept { return qHash(key); }
};

/// A dictionary that remembers the order in which its keys came, as a manifest's author wrote them.
template <class Value>
using OrderedDictionary = tsl::ordered_map<QString, Value, QStringHasher, std::equal_to<QString>,
    std::allocator<std::pair<QString, Value>>, std::vector<std::pair<QString, Value>>>;

/// Any values under ordered keys; travels inside a QVariant.
using OrderedVariantDictionary = OrderedDictionary<QVariant>;
/// Texts under ordered keys; travels inside a QVariant.
using OrderedStringDictionary = OrderedDictionary<QString>;

Q_DECLARE_METATYPE(OrderedVariantDictionary)
Q_DECLARE_METATYPE(OrderedStringDictionary)
