#include "document/LayerChecks.h"

#include "platform/script/ScriptException.h"

#include <algorithm>
#include <cmath>

namespace {

/// Well within what can be read from a file, with room for what plug-ins keep on the deepest layer.
constexpr int mostLevels = 250;

int groupsAround(LayerPointer parent)
{
    int groups = 0;
    for (; parent; parent = parent->parent())
        ++groups;
    return groups;
}

bool isFiniteNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return std::isfinite(value.toDouble());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

QVariantMap mapForKey(const QVariantMap &values, const QString &key)
{
    const auto value = values.value(key);
    if (value.isValid() && value.typeId() != QMetaType::QVariantMap)
        throw ScriptException(QStringLiteral("The %1 of a new layer has to be a plain object.").arg(key));
    return value.toMap();
}

} // namespace

void checkFrame(const QVariantMap &frame)
{
    static const QStringList keys{
        QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"), QStringLiteral("height")};
    for (auto entry = frame.begin(); entry != frame.end(); ++entry) {
        if (!keys.contains(entry.key())) {
            throw ScriptException(
                QStringLiteral("A frame has no \"%1\". It has: %2.").arg(entry.key(), keys.join(QStringLiteral(", "))));
        }
        if (!isFiniteNumber(*entry))
            throw ScriptException(QStringLiteral("The frame's \"%1\" has to be a number.").arg(entry.key()));
        const bool isSize = entry.key() == u"width" || entry.key() == u"height";
        if (isSize && entry->toDouble() < 0)
            throw ScriptException(QStringLiteral("The frame's \"%1\" cannot be less than 0.").arg(entry.key()));
    }
}

void checkStyle(const QVariantMap &style)
{
    for (auto entry = style.begin(); entry != style.end(); ++entry) {
        if (entry->typeId() == QMetaType::Double && !isFiniteNumber(*entry)) {
            throw ScriptException(
                QStringLiteral("The style's \"%1\" is a number that no document can hold.").arg(entry.key()));
        }
    }
}

void checkNewLayer(const QVariantMap &values)
{
    const auto types = Layer::types();
    const auto type = values.value(QStringLiteral("type"));
    if (type.typeId() != QMetaType::QString || !types.contains(type.toString())) {
        throw ScriptException(
            QStringLiteral("A new layer needs a type, one of: %1.").arg(types.join(QStringLiteral(", "))));
    }
    const auto name = values.value(QStringLiteral("name"));
    if (name.isValid() && name.typeId() != QMetaType::QString)
        throw ScriptException(QStringLiteral("The name of a new layer has to be a text."));
    checkFrame(mapForKey(values, QStringLiteral("frame")));
    checkStyle(mapForKey(values, QStringLiteral("style")));
}

void checkParent(const LayerPointer &parent, int levels)
{
    // Files may hold layers in what they do not call a group; they stay as they are.
    if (parent && parent->type() != u"group" && parent->layers().isEmpty()) {
        throw ScriptException(
            QStringLiteral("The layer \"%1\" is no group and cannot hold layers. Take a group, or the top "
                           "level of the document.")
                .arg(parent->name()));
    }
    if (groupsAround(parent) + levels > mostLevels)
        throw ScriptException(QStringLiteral("Groups can be at most %1 levels deep.").arg(mostLevels));
}

int levelsOf(const Layer &layer)
{
    int inner = 0;
    for (const auto &each : layer.layers())
        inner = std::max(inner, levelsOf(*each));
    return inner + 1;
}
