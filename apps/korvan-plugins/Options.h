#pragma once

#include "hosting/HostingOptions.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// For every command.
struct GlobalOptions : HostingOptions
{
    bool json = false;
};

struct InfoOptions
{
    QString plugin;
};

struct EditOptions
{
    QString plugin;
};

struct RunOptions
{
    std::optional<QString> specifier;
    std::optional<QString> standaloneFile;
    QStringList handlers;
    std::optional<QString> documentFile;
    QVariantMap context;
    double waitSeconds = 60;
    std::optional<QString> dumpDocumentFile;
    /// Where to write where the scripts have spent their time.
    std::optional<QString> profileFile;
    /// Whether to tell each call of the scripts into the application.
    bool trace = false;
};

struct SupplyOptions
{
    /// Nil: what there is to choose from is listed.
    std::optional<QString> plugin;
    /// Identifier or name; nil for a plug-in that has only one.
    std::optional<QString> supplier;
    std::optional<QString> documentFile;
    double waitSeconds = 60;
    std::optional<QString> dumpDocumentFile;
};

struct EnablingOptions
{
    QStringList identifiers;
    bool enabled = true;
};

struct DownloadOptions
{
    enum class AllUpdates { Latest, Compatible };

    /// "ID" or "ID@VERSION"; empty for all updates.
    QStringList plugins;
    AllUpdates all = AllUpdates::Latest;
};

struct InstallOptions
{
    /// "ID" or "ID@VERSION".
    QString plugin;
};

struct PortOptions
{
    QString port;
    /// To send.
    QString message;
};

struct UnpackOptions
{
    QString archive;
    QString folder;
};

struct ExportOptions
{
    /// Identifier or path.
    QString plugin;
    /// The new bundle's own folder.
    QString folder;
};

struct CreateOptions
{
    QString name;
    /// Nil: one that is made from the name.
    std::optional<QString> identifier;
    QString templateName;
};

struct ValidateOptions
{
    QStringList paths;
};

struct PackOptions
{
    QString path;
    /// Nil: named after the plug-in and its version, in the current folder.
    std::optional<QString> archive;
    std::optional<QString> feed;
    /// Of the archive, or of its folder when it ends in "/".
    QString url;
};

struct TestOptions
{
    /// Plug-ins, folders of tests, or files.
    QStringList paths;
    /// Nil: "document.json" beside the tests, or else an empty one.
    std::optional<QString> documentFile;
    /// Only tests with that in their title, whatever the case.
    QString filter;
    /// For each test.
    double limitSeconds = 5;
};

struct CompareVersionsOptions
{
    QString first;
    QString second;
};
