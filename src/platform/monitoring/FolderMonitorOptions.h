#pragma once

#include <QByteArray>
#include <QSet>

/// How deep a folder is watched.
struct FolderMonitorOptions
{
    /// Folders of this extension that lie directly in the folder are watched with everything in them; none when empty.
    QByteArray packageExtension;
    /// Names, without extension, of folders in those that are not looked into. Hidden ones never are.
    QSet<QByteArray> ignoredNames;

    friend bool operator==(const FolderMonitorOptions &, const FolderMonitorOptions &) = default;
};
