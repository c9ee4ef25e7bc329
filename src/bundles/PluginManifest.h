#pragma once

#include "commands/CommandEntry.h"
#include "platform/JSON.h"
#include "platform/Result.h"

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>

#include <optional>
#include <vector>

/// What a manifest says, as a plain value. A key that is missing or holds another type than this is nil (false):
///
/// | Key                              | Type             | Field                          |
/// |----------------------------------|------------------|--------------------------------|
/// | "author"                         | string           | author                         |
/// | "authorEmail"                    | string           | authorEmail                    |
/// | "name"                           | string           | name                           |
/// | "identifier"                     | string           | identifier                     |
/// | "description"                    | string           | pluginDescription              |
/// | "suppliesData"                   | boolean          | suppliesData                   |
/// | "version"                        | string or number | version                        |
/// | "compatibleVersion"              | string           | compatibleVersion              |
/// | "maxCompatibleVersion"           | string           | maximumCompatibleVersion       |
/// | "homepage"                       | URL as string    | homepageURL                    |
/// | "appcast"                        | URL as string    | updatingInfoURL                |
/// | "commands"                       | array            | commands                       |
/// | "menu"                           | object           | menu                           |
/// | "disableCocoaScriptPreprocessor" | boolean          | disableCocoaScriptPreprocessor |
/// | "icon"                           | string           | icon                           |
struct PluginManifest
{
    std::optional<QString> author;
    std::optional<QString> authorEmail;
    std::optional<QString> name;
    std::optional<QString> identifier;
    std::optional<QString> pluginDescription;
    bool suppliesData = false;
    /// A number is here by its decimal text.
    std::optional<QString> version;
    std::optional<QString> compatibleVersion;
    std::optional<QString> maximumCompatibleVersion;
    QUrl homepageURL;
    QUrl updatingInfoURL;
    /// The elements that are objects, in order.
    std::vector<CommandEntry> commands;
    std::optional<QVariantMap> menu;
    bool disableCocoaScriptPreprocessor = false;
    std::optional<QString> icon;
};

/// A larger manifest is not read.
inline constexpr qint64 largestManifest = 16 * 1024 * 1024;

/// Reads a manifest's text. The error's text is the parser's, or "(null)" for valid JSON that is no object.
Result<PluginManifest> parsePluginManifest(const QByteArray &text, JSONParser &parser);
