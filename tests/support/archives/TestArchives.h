#pragma once

#include "support/archives/ZipBuilder.h"

#include <QByteArray>
#include <QString>

/// The archive of an update: a plug-in "<identifier>.korvanplugin" of that version inside of a folder.
inline QByteArray pluginArchive(const QString &identifier, const QString &version)
{
    const auto manifest = QStringLiteral("{\"identifier\": \"%1\", \"version\": \"%2\"}").arg(identifier, version);
    const auto folder = "update/" + identifier.toUtf8() + ".korvanplugin/Contents/Korvan/";
    return ZipBuilder({{folder + "manifest.json", manifest.toUtf8()}, {folder + "script.js", "function onRun() {}"}})
        .bytes();
}
