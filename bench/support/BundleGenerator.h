#pragma once

#include <QString>

/// What a generated folder of plug-ins holds, in bytes and numbers.
struct GeneratedBundles
{
    int bundles = 0;
    int commands = 0;
    qint64 textBytes = 0;
    qint64 iconBytes = 0;
};

/// Fills a folder with plug-ins as they are met in the wild, the same ones for the same number: manifests of 1 to 4 KB
/// with 1 to 8 commands, 1 to 3 scripts of 2 to 40 KB, plain folders nested 1 to 4 deep, links to folders, an icon in a
/// third of them, and a few that are broken.
GeneratedBundles generateBundles(const QString &folder, int count);
