#pragma once

#include "platform/Result.h"
#include "platform/script/ScriptCoreModules.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>

/// Finds the files behind `require`: the core modules by their map, anything else relative to the file that asks, with
/// or without ".js" or ".json", or a folder's "index.js". Links are followed, but never to a place outside the folder
/// that the asking file belongs to: the plug-in's, or for a core module the one that it lies in.
/// Main thread only.
class ScriptModules
{
public:
    explicit ScriptModules(const ScriptCoreModules &coreModules);

    /// The script that asks when no module does, and the folder that its modules have to lie in.
    void setMainScript(const QByteArray &scriptPath, const QByteArray &folder);

    /// The module's file, as scripts see it. `requirer` is such a file or "" for the main script.
    Result<QString> resolve(const QString &name, const QString &requirer);
    /// The file, as scripts see it, as a core module, whether or not it has a name.
    QString addCoreModule(const QUrl &url);
    /// Whether the file is a core module, or was required from one as a file of its own.
    bool isCoreModule(const QString &file) const { return m_places.value(file).isCore; }

    /// The text of a file that resolve() has answered; without a byte-order mark.
    Result<QString> text(const QString &file) const;
    QUrl url(const QString &file) const;
    /// The folder that the file's own modules have to lie in.
    QByteArray folder(const QString &file) const { return m_places.value(file).folder; }

private:
    struct Place
    {
        QByteArray path;
        /// What may be required from there.
        QByteArray folder;
        bool isCore = false;
    };

    Result<Place> find(const QString &name, const Place &requirer) const;
    QString add(const Place &place);

    ScriptCoreModules m_coreModules;
    Place m_mainScript;
    QHash<QString, Place> m_places;
};
