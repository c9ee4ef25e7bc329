#pragma once

#include "platform/FolderHandle.h"

#include <QByteArray>

#include <memory>
#include <variant>

/// A folder below which folders are made by paths that strangers chose, and nowhere else.
class ContainedFolder
{
public:
    /// How a path is found: the system is asked to stay below the folder while it does, where it can; or each component
    /// is opened on its own. Both answer the same; the second also makes what is missing.
    enum class Lookup { System, Components };

    enum class Failure {
        /// A folder on the way can be neither entered nor made.
        CannotCreate,
        /// The path leads out, through a link or "..". Nothing was made out there.
        LeadsOutside
    };
    using Subfolder = std::variant<std::shared_ptr<const FolderHandle>, Failure>;

    /// `path` is where the folder is, which counts towards the longest path that the system takes.
    ContainedFolder(FolderHandle folder, const QByteArray &path, Lookup lookup = Lookup::System);

    /// The folder at a path relative to this one, made with all folders on the way where it does not exist. Leading
    /// slashes, double ones and "." mean nothing. Links are followed as long as they stay inside; one that leads out is
    /// LeadsOutside even if a later one would come back.
    Subfolder makeSubfolder(const QByteArray &relativePath);

    /// To be called when a link was made or replaced below this folder: paths may lead elsewhere now.
    void forgetPaths() { m_latest.reset(); }

    /// Whether programs could open something at that path by its name.
    bool canHold(const QByteArray &relativePath) const;

private:
    Subfolder find(const QByteArray &relativePath) const;
    Subfolder walk(const QByteArray &relativePath) const;
    std::variant<FolderHandle, Failure> enter(const FolderHandle &folder, const QByteArray &name) const;

    std::shared_ptr<const FolderHandle> m_folder;
    qsizetype m_pathLength;
    Lookup m_lookup;
    /// Archives name the files of one folder after each other.
    QByteArray m_latestPath;
    std::shared_ptr<const FolderHandle> m_latest;
};
