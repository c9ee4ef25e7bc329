#include "commands/WeakPlugins.h"

#include "commands/KRPluginCommand.h"

namespace {

QVariant withWeakPlugin(const ScriptObjectPointer &object)
{
    const bool isPlugin =
        std::dynamic_pointer_cast<KRPluginCommand>(object) || std::dynamic_pointer_cast<KRPluginCommandBundle>(object);
    return isPlugin ? QVariant::fromValue(WeakScriptObjectPointer(object)) : QVariant::fromValue(object);
}

} // namespace

QVariant withWeakPlugins(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<ScriptObjectPointer>())
        return withWeakPlugin(value.value<ScriptObjectPointer>());
    if (value.typeId() == QMetaType::QVariantList) {
        auto list = value.toList();
        for (auto &element : list)
            element = withWeakPlugins(element);
        return list;
    }
    if (value.typeId() == QMetaType::QVariantMap) {
        auto map = value.toMap();
        for (auto &entry : map)
            entry = withWeakPlugins(entry);
        return map;
    }
    return value;
}
