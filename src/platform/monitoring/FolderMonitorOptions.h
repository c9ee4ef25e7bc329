#pragma once

#include <QByteArray>
#include <QSet>

/// What a folder monitor watches besides the entries of its folder.
struct FolderMonitorOptions
{
    /// Folders with this extension that lie directly in the folder, or that links in it lead to, are watched all the
    /// way down, with what their files hold. Links in them are followed, up to a thousand links and a thousand folders
    /// behind them for each package, but for those that lead to a folder around the package. Compared without regard to
    /// case; empty for none.
    QByteArray packageExtension;
    /// Inside of packages, folders of these names are left out whatever their extension, and so are hidden ones.
    QSet<QByteArray> ignoredNames;
};
