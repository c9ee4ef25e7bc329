#include "platform/PropertyListDictionary.h"

namespace {

/// Null removes what is there.
void setNode(plist_t dictionary, const QByteArray &key, PropertyListNode node)
{
    if (node)
        ::plist_dict_set_item(dictionary, key.constData(), node.release());
    else if (::plist_dict_get_item(dictionary, key.constData()))
        ::plist_dict_remove_item(dictionary, key.constData());
}

bool setItem(plist_t dictionary, const QString &key, const QVariant &value)
{
    const auto text = textForPropertyList(key);
    auto node = value.isValid() ? nodeFromVariant(value) : nullptr;
    if (!text || (value.isValid() && !node))
        return false;
    setNode(dictionary, *text, std::move(node));
    return true;
}

} // namespace

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
    return setItem(m_root.get(), key, value);
}

bool PropertyListDictionary::setValueInEntry(const QString &entry, const QString &key, const QVariant &value)
{
    const auto name = textForPropertyList(entry);
    if (!name)
        return false;
    auto changed = copyOfEntry(entry);
    if (!changed || ::plist_get_node_type(changed.get()) != PLIST_DICT)
        changed.reset(::plist_new_dict());
    if (!setItem(changed.get(), key, value))
        return false;
    setEntry(entry, ::plist_dict_get_size(changed.get()) > 0 ? std::move(changed) : nullptr);
    return true;
}

PropertyListNode PropertyListDictionary::copyOfEntry(const QString &key) const
{
    const auto text = textForPropertyList(key);
    auto *const node = text ? ::plist_dict_get_item(m_root.get(), text->constData()) : nullptr;
    return PropertyListNode(node ? ::plist_copy(node) : nullptr);
}

void PropertyListDictionary::setEntry(const QString &key, PropertyListNode entry)
{
    if (const auto text = textForPropertyList(key))
        setNode(m_root.get(), *text, std::move(entry));
}
