#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// What a program's command line says about the host that it is. Nil: as usual.
struct HostingOptions
{
    /// In place of the folders of the user's settings.
    std::optional<QStringList> folders;
    std::optional<QString> supportFolder;
    std::optional<QString> defaultsFile;
    /// Settings for this process, over those of the file.
    QVariantMap defaults;
    std::optional<QString> resourcesFolder;
    std::optional<QString> hostVersion;
    std::optional<QString> blocklistURL;
    bool safeMode = false;
};
