// The data that a plug-in keeps on layers and documents.

#include "commands/KRPluginCommand.h"
#include "commands/PluginData.h"
#include "platform/JSONValidity.h"

namespace {

/// A value that cannot be read back, or that stands under such a key, would make the whole document unreadable.
bool canBeKept(const QVariant &value, const QString &key, const QString &pluginIdentifier)
{
    return isValidJSONValue(value) && isValidJSONText(key) && isValidJSONText(pluginIdentifier);
}

} // namespace

QVariant KRPluginCommand::valueForKeyOnLayer(const std::optional<QString> &key,
    const std::shared_ptr<UserInfoOwner> &layer, const std::optional<QString> &forPluginIdentifier) const
{
    return key && layer && forPluginIdentifier ? pluginDataValue(*layer, *forPluginIdentifier, *key) : QVariant();
}

QVariant KRPluginCommand::valueForKeyOnDocument(const std::optional<QString> &key,
    const std::shared_ptr<UserInfoOwner> &document, const std::optional<QString> &forPluginIdentifier) const
{
    return valueForKeyOnLayer(key, document, forPluginIdentifier);
}

QVariant KRPluginCommand::valueForKeyOnLayer(
    const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &layer) const
{
    return valueForKeyOnLayer(key, layer, pluginBundleIdentifierForMetadata());
}

QVariant KRPluginCommand::valueForKeyOnDocument(
    const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &document) const
{
    return valueForKeyOnDocument(key, document, pluginBundleIdentifierForMetadata());
}

void KRPluginCommand::setValueForKeyOnObject(const QVariant &value, const std::optional<QString> &key,
    const std::shared_ptr<UserInfoOwner> &object, const std::optional<QString> &forPluginIdentifier)
{
    if (!key || !object || !forPluginIdentifier) {
        error(QStringLiteral("setValue:forKey:onObject:forPluginIdentifier: requires non-nil values for key, layer and "
                             "pluginIdentifier"));
        return;
    }
    if (value.isValid() && !canBeKept(value, *key, *forPluginIdentifier)) {
        // The colon stands twice: the operation's name ends in one.
        error(QStringLiteral("values passed to setValue:forKey:onObject:forPluginIdentifier:: must be composed of "
                             "arrays, dictionaries, numbers and strings"));
        return;
    }
    setPluginDataValue(*object, *forPluginIdentifier, *key, value);
}

void KRPluginCommand::setValueForKeyOnLayer(const QVariant &value, const std::optional<QString> &key,
    const std::shared_ptr<UserInfoOwner> &layer, const std::optional<QString> &forPluginIdentifier)
{
    setValueForKeyOnObject(value, key, layer, forPluginIdentifier);
}

void KRPluginCommand::setValueForKeyOnDocument(const QVariant &value, const std::optional<QString> &key,
    const std::shared_ptr<UserInfoOwner> &document, const std::optional<QString> &forPluginIdentifier)
{
    setValueForKeyOnObject(value, key, document, forPluginIdentifier);
}

void KRPluginCommand::setValueForKeyOnLayer(
    const QVariant &value, const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &layer)
{
    setValueForKeyOnLayer(value, key, layer, pluginBundleIdentifierForMetadata());
}

void KRPluginCommand::setValueForKeyOnDocument(
    const QVariant &value, const std::optional<QString> &key, const std::shared_ptr<UserInfoOwner> &document)
{
    setValueForKeyOnDocument(value, key, document, pluginBundleIdentifierForMetadata());
}

std::optional<QString> KRPluginCommand::pluginBundleIdentifierForMetadata() const
{
    const auto bundle = pluginBundle();
    return bundle ? bundle->identifier() : commandSpecifier().stringValue();
}
