#pragma once

#include "platform/script/ScriptClass.h"

#include <QByteArray>

/// What scripts may call on objects of that class, as a TypeScript interface of that name.
QByteArray interfaceOfClass(const ScriptClass &scriptClass, const char *name);

/// Keys of a dictionary, each with its type, as a TypeScript interface.
template <class Key>
QByteArray interfaceOfKeys(std::span<const Key> keys, const char *name)
{
    QByteArray text = "    interface " + QByteArray(name) + " {\n";
    for (const auto &key : keys)
        text += "        readonly " + QByteArray(key.name) + ": " + key.type + ";\n";
    return text + "    }\n";
}
