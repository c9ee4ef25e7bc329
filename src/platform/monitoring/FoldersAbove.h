#pragma once

#include "platform/monitoring/FolderEvents.h"

#include <memory>
#include <unordered_map>
#include <unordered_set>

/// Hears when a folder above others is moved: what is below it has another path then, of which the system says nothing
/// there. Each folder is watched once, for however many below it, and quietly: of its entries nothing is heard.
class FoldersAbove
{
public:
    class Listener
    {
    public:
        /// Only takes note: ends nobody.
        virtual void folderAboveMoved() = 0;

    protected:
        ~Listener() = default;
    };

    explicit FoldersAbove(FolderEvents &events);
    /// The process's one; it lives as long as somebody holds it, and has to end before the events do.
    static std::shared_ptr<FoldersAbove> shared(FolderEvents &events);
    ~FoldersAbove();
    FoldersAbove(const FoldersAbove &) = delete;
    FoldersAbove &operator=(const FoldersAbove &) = delete;

    /// Lets the listener hear of the folder, whose path has no links in it, and of all those above it, until it
    /// releases the folder. Of those that cannot be watched nothing is heard. A listener hears of each once, however
    /// many below it holds, and until it releases the first of these: it releases all of them together.
    void hold(const QByteArray &folder, Listener &listener);
    void release(const QByteArray &folder, Listener &listener);

private:
    class Folder;

    FolderEvents &m_events;
    std::unordered_map<QByteArray, std::unique_ptr<Folder>> m_folders;
};
