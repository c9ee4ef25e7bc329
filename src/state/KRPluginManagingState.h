#pragma once

#include "platform/Export.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What the registry asks of the store that keeps each plug-in's state: whether the user disabled it, and whether its
/// version is known not to work. Main thread only.
class KORVAN_EXPORT KRPluginManagingState
{
public:
    virtual ~KRPluginManagingState();

    /// `shouldEnablePluginIdentifier:withVersion:`. Whether a plug-in that was found starts enabled.
    virtual bool shouldEnablePluginIdentifier(const QString &identifier, const std::optional<QString> &withVersion) = 0;
    /// `isPluginWithIdentifier:incompatibleWithVersion:`. Whether that version is listed as not working.
    virtual bool isPluginWithIdentifier(
        const QString &identifier, const std::optional<QString> &incompatibleWithVersion) const = 0;
    /// Forgets what it knows of all other plug-ins. (The name's spelling is kept as it came into use.)
    virtual void updateMetadataWithPluginIndentifiers(const QStringList &identifiers) = 0;
};
