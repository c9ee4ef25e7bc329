#include "commands/services/LayerRows.h"

#include "platform/script/ScriptNativeCall.h"

#include <QByteArray>
#include <QHash>

namespace {

using Places = std::vector<qint32>;

QByteArray bytesOf(const Places &places)
{
    return {reinterpret_cast<const char *>(places.data()), qsizetype(places.size() * sizeof(Places::value_type))};
}

/// Values, each once, and where each row has its own.
class Column
{
public:
    explicit Column(std::size_t rowCount) { m_places.reserve(rowCount); }

    void append(const QVariant &value)
    {
        if (value.typeId() != QMetaType::QString) {
            m_places.push_back(add(value));
            return;
        }
        auto &place = m_placesOfTexts[value.toString()];
        if (place == 0)
            place = add(value) + 1;
        m_places.push_back(place - 1);
    }

    QVariantMap result() const
    {
        return {{QStringLiteral("values"), m_values}, {QStringLiteral("places"), bytesOf(m_places)}};
    }

private:
    qint32 add(const QVariant &value)
    {
        m_values.append(value.isValid() ? value : QVariant::fromValue(nullptr));
        return qint32(m_values.size() - 1);
    }

    QVariantList m_values;
    /// One more than the place; 0 until there is one.
    QHash<QString, qint32> m_placesOfTexts;
    Places m_places;
};

} // namespace

LayerRows::LayerRows(const ScriptObjectPointer &root)
{
    if (!root)
        return;
    appendGroupsAround(root);
    m_first = m_rows.size();
    appendLayersOf(*root);
}

// Both without calling themselves: scripts can nest groups deeper than a stack is.

/// The layer itself too; nothing for a document, which has no "parent".
void LayerRows::appendGroupsAround(const ScriptObjectPointer &layer)
{
    ScriptNativeCaller parentOf("parent");
    std::vector<ScriptObjectPointer> fromInside;
    auto next = layer;
    for (auto parent = parentOf(*next); parent.isValid(); parent = parentOf(*next)) {
        fromInside.push_back(next);
        next = parent.value<ScriptObjectPointer>();
        if (!next)
            break;
    }
    for (auto group = fromInside.rbegin(); group != fromInside.rend(); ++group)
        m_rows.push_back({*group, int(m_rows.size()) - 1});
}

void LayerRows::appendLayersOf(ScriptObject &root)
{
    struct Level
    {
        QVariantList layers;
        qsizetype next;
        int group;
    };
    ScriptNativeCaller layersOf("layers");
    std::vector<Level> levels{{layersOf(root).toList(), 0, int(m_rows.size()) - 1}};
    while (!levels.empty()) {
        auto &level = levels.back();
        if (level.next == level.layers.size()) {
            levels.pop_back();
            continue;
        }
        const auto layer = level.layers[level.next++].value<ScriptObjectPointer>();
        if (!layer)
            continue;
        m_rows.push_back({layer, level.group});
        if (auto inside = layersOf(*layer).toList(); !inside.isEmpty())
            levels.push_back({std::move(inside), 0, int(m_rows.size()) - 1});
    }
}

QVariantMap LayerRows::values(const QStringList &keys) const
{
    QVariantMap columns{{QStringLiteral("first"), int(m_first)}, {QStringLiteral("groups"), groups()}};
    for (const auto &key : keys)
        columns.insert(key, column(key));
    return columns;
}

QByteArray LayerRows::groups() const
{
    Places groups;
    groups.reserve(m_rows.size());
    for (const auto &row : m_rows)
        groups.push_back(row.group);
    return bytesOf(groups);
}

QVariantMap LayerRows::column(const QString &key) const
{
    const auto dot = key.indexOf(u'.');
    const auto name = key.left(dot).toLatin1();
    const auto member = dot < 0 ? QString() : key.mid(dot + 1);
    ScriptNativeCaller valueOf(name.constData());
    Column column(m_rows.size());
    for (const auto &row : m_rows) {
        const auto value = valueOf(*row.layer);
        column.append(dot < 0 ? value : value.toMap().value(member));
    }
    return column.result();
}

QVariantList LayerRows::layersAt(const QVariantList &rows) const
{
    QVariantList layers;
    for (const auto &row : rows)
        layers.append(QVariant::fromValue(m_rows.at(row.toULongLong()).layer));
    return layers;
}

QVariantList LayerRows::layers() const
{
    QVariantList layers;
    layers.reserve(qsizetype(m_rows.size() - m_first));
    for (auto row = m_first; row < m_rows.size(); ++row)
        layers.append(QVariant::fromValue(m_rows[row].layer));
    return layers;
}
