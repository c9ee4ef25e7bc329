#pragma once

#include "bundles/KRPluginBundle.h"
#include "platform/KRError.h"
#include "updates/KRPluginVersions.h"

#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// What feeds offer, by the plug-ins' identifiers.
using PluginVersionsTable = QMap<QString, std::shared_ptr<KRPluginVersions>>;

/// One plug-in that has been checked: an error or none, the plug-in, the highest version that its feed offers (nil with
/// an error, and when there is none).
using UpdateCheckHandler = std::function<void(const std::optional<KRError> &error,
    const std::shared_ptr<KRPluginBundle> &plugin, const std::optional<QString> &latestVersion)>;

/// The errors of a batch; nil for none.
using UpdateErrorsHandler = std::function<void(const std::optional<QList<KRError>> &errors)>;

using UpdateErrorHandler = std::function<void(const std::optional<KRError> &error)>;
