#include "platform/PropertyListDictionary.h"

PropertyListDictionary::PropertyListDictionary()
    : m_root(::plist_new_dict())
{ }

PropertyListDictionary::PropertyListDictionary(PropertyListNode root)
    : m_root(std::move(root))
{ }

std::optional<PropertyListDictionary> PropertyListDictionary::fromBytes(const QByteArray &bytes)
{
    auto root = nodeFromBytes(bytes);
    if (!root || ::plist_get_node_type(root.get()) != PLIST_DICT)
        return std::nullopt;
    return PropertyListDictionary(std::move(root));
}

std::optional<PropertyListDictionary> PropertyListDictionary::fromVariantMap(const QVariantMap &map)
{
    auto root = nodeFromVariant(map);
    return root ? std::optional(PropertyListDictionary(std::move(root))) : std::nullopt;
}

PropertyListDictionary PropertyListDictionary::copy() const
{
    return PropertyListDictionary(PropertyListNode(::plist_copy(m_root.get())));
}

QVariant PropertyListDictionary::value(const QString &key) const
{
    const auto text = textForPropertyList(key);
    auto *const node = text ? ::plist_dict_get_item(m_root.get(), text->constData()) : nullptr;
    return node ? variantFromNode(node) : QVariant();
}

QStringList PropertyListDictionary::keys() const
{
    QStringList keys;
    plist_dict_iter iterator = nullptr;
    ::plist_dict_new_iter(m_root.get(), &iterator);
    const std::unique_ptr<void, PropertyListMemoryReleaser> owned(iterator);
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        ::plist_dict_next_item(m_root.get(), iterator, &key, &value);
        if (!value)
            return keys;
        const PropertyListMemory text(key);
        keys.append(QString::fromUtf8(text.get()));
    }
}

QVariantMap PropertyListDictionary::toVariantMap() const
{
    return variantFromNode(m_root.get()).toMap();
}

bool PropertyListDictionary::setValue(const QString &key, const QVariant &value)
{
    const auto text = textForPropertyList(key);
    auto node = value.isValid() ? nodeFromVariant(value) : nullptr;
    if (!text || (value.isValid() && !node))
        return false;
    if (node)
        ::plist_dict_set_item(m_root.get(), text->constData(), node.release());
    else if (::plist_dict_get_item(m_root.get(), text->constData()))
        ::plist_dict_remove_item(m_root.get(), text->constData());
    return true;
}
