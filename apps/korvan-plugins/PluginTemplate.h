#pragma once

#include "platform/KRError.h"

#include <QString>

#include <optional>

/// What a new plug-in is made of.
struct NewPlugin
{
    QString name;
    QString identifier;
    /// The application's major version.
    QString hostVersion;
    /// A folder of "templates" beside the example plug-ins.
    QString templateName;
};

/// The name of the folder for a plug-in of that name, whatever stands in it: one path component, not hidden, that hosts
/// unpack. Nil when
/// nothing of the name is left.
std::optional<QString> folderNameForPlugin(const QString &name);

/// An identifier for a plug-in of that name: "com.example." and the name's letters, without their accents, and digits.
/// Nil when the name has none that identifiers can hold: two such plug-ins would hide each other.
std::optional<QString> identifierForPlugin(const QString &name);

/// Makes the bundle at `path`, with what an editor needs to complete scripts, complete or not at all. What is there
/// already stays as it is, and is an error.
std::optional<KRError> createPlugin(const NewPlugin &plugin, const QString &path);
