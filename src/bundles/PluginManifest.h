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

/// What a manifest says, as plain values, in two parts: what a reload needs at once, and what few ever ask for. A key
/// that is missing or holds another type than this is nil (false):
///
/// | Key                              | Type             | Field                                     |
/// |----------------------------------|------------------|-------------------------------------------|
/// | "author"                         | string           | PluginDetails::author                     |
/// | "authorEmail"                    | string           | PluginDetails::authorEmail                |
/// | "name"                           | string           | PluginManifest::name                      |
/// | "identifier"                     | string           | PluginManifest::identifier                |
/// | "description"                    | string           | PluginDetails::pluginDescription          |
/// | "suppliesData"                   | boolean          | PluginManifest::suppliesData              |
/// | "version"                        | string or number | PluginManifest::version                   |
/// | "compatibleVersion"              | string           | PluginDetails::compatibleVersion          |
/// | "maxCompatibleVersion"           | string           | PluginDetails::maximumCompatibleVersion   |
/// | "homepage"                       | URL as string    | PluginDetails::homepageURL                |
/// | "appcast"                        | URL as string    | PluginDetails::updatingInfoURL            |
/// | "commands"                       | array            | PluginManifest::commands                  |
/// | "menu"                           | object           | PluginDetails::menu                       |
/// | "disableCocoaScriptPreprocessor" | boolean          | PluginManifest::disableCocoaScriptPreprocessor |
/// | "icon"                           | string           | PluginManifest::icon                      |
struct PluginManifest
{
    std::optional<QString> name;
    std::optional<QString> identifier;
    bool suppliesData = false;
    /// A number is here by its decimal text.
    std::optional<QString> version;
    /// The elements that are objects, in order.
    std::vector<CommandEntry> commands;
    bool disableCocoaScriptPreprocessor = false;
    std::optional<QString> icon;
};

struct PluginDetails
{
    std::optional<QString> author;
    std::optional<QString> authorEmail;
    std::optional<QString> pluginDescription;
    std::optional<QString> compatibleVersion;
    std::optional<QString> maximumCompatibleVersion;
    /// Empty when nil or no URL.
    QUrl homepageURL;
    QUrl updatingInfoURL;
    std::optional<QVariantMap> menu;
};

/// Reads a manifest's text. The error's text is the parser's, or "(null)" for valid JSON that is no object.
Result<PluginManifest> parsePluginManifest(const QByteArray &text, JSONParser &parser);

/// The rest of a manifest that has been read. Of a text that is no manifest: nothing.
PluginDetails parsePluginDetails(const QByteArray &text);
