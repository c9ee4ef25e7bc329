// Any text as JSON: the reader that knows the places of values takes what hosts take, and makes the same of it.

#include "platform/JSONText.h"
#include "platform/UTF8.h"
#include "validation/JSONNode.h"
#include "validation/TextPosition.h"

#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

bool isSame(const JSONNode &node, const QVariant &value);

bool isSameObject(const JSONNode &node, const QVariantMap &map)
{
    return std::all_of(node.members.begin(), node.members.end(), [&](const JSONMember &member) {
        return map.contains(member.key);
    }) && std::all_of(map.keyValueBegin(), map.keyValueEnd(), [&](const auto &entry) {
        const auto *const member = node.member(entry.first);
        return member && isSame(member->value, entry.second);
    });
}

bool isSameArray(const JSONNode &node, const QVariantList &list)
{
    return std::equal(node.elements.begin(), node.elements.end(), list.begin(), list.end(), isSame);
}

bool isSame(const JSONNode &node, const QVariant &value)
{
    switch (node.type) {
    case JSONNode::Type::Null:
        return value.typeId() == QMetaType::Nullptr;
    case JSONNode::Type::Boolean:
        return value.typeId() == QMetaType::Bool && value.toBool() == node.boolean;
    case JSONNode::Type::Number:
        return value.toDouble() == node.text.toDouble();
    case JSONNode::Type::String:
        return value.typeId() == QMetaType::QString && value.toString() == node.text;
    case JSONNode::Type::Array:
        return value.typeId() == QMetaType::QVariantList && isSameArray(node, value.toList());
    case JSONNode::Type::Object:
        break;
    }
    return value.typeId() == QMetaType::QVariantMap && isSameObject(node, value.toMap());
}

void checkError(const QString &text, const JSONSyntaxError &error)
{
    if (error.message.isEmpty() || error.offset < 0 || error.offset > text.size())
        qFatal("an error without a text or a place");
    const auto position = positionIn(text, error.offset);
    if (position.line < 1 || position.line > text.size() + 1 || position.column < 1
        || position.column > text.size() + 1)
        qFatal("an error outside of the text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    // What is no text is refused before, and a byte-order mark is taken away.
    if (!isValidUTF8(bytes) || bytes.startsWith("\xEF\xBB\xBF"))
        return 0;
    const auto text = QString::fromUtf8(bytes);
    const auto ours = readJSON(text);
    const auto hosts = variantFromJSON(bytes);
    const auto *const error = std::get_if<JSONSyntaxError>(&ours);
    if (error)
        checkError(text, *error);
    // Behind a number or a word that is the whole of a text, hosts overlook zeros. A manifest is an object.
    const bool isScalar = hosts.isOk() && hosts.value().typeId() != QMetaType::QVariantMap
        && hosts.value().typeId() != QMetaType::QVariantList;
    if (isScalar)
        return 0;
    if (hosts.isOk() == (error != nullptr))
        qFatal("%s: %s", error ? "only hosts read it" : "hosts do not read it",
            error ? qPrintable(error->message) : qPrintable(hosts.error().localizedDescription));
    if (!error && !isSame(std::get<JSONNode>(ours), hosts.value()))
        qFatal("another value");
    return 0;
}
