#include "platform/PropertyList.h"

#include "platform/PropertyListNodes.h"

namespace {

KRError propertyListError(const QString &text)
{
    return {QStringLiteral("propertylist"), 0, text};
}

} // namespace

Result<QVariant> variantFromPropertyList(const QByteArray &bytes)
{
    const auto root = nodeFromBytes(bytes);
    if (!root)
        return propertyListError(QStringLiteral("This is no property list."));
    return variantFromNode(root.get());
}

Result<QByteArray> propertyListFromVariant(const QVariant &value)
{
    const auto root = nodeFromVariant(value);
    if (!root)
        return propertyListError(QStringLiteral("The value holds something that a property list cannot."));
    return xmlFromNode(root.get());
}
