#pragma once

#include "platform/monitoring/FolderWatch.h"

#include <QSocketNotifier>

#include <chrono>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

class ScheduledCall;

/// All watched folders of the process: the system has few queues of changes to give, so they share one. Main thread
/// only, on its event loop.
///
/// Changes are told once they have been quiet for a while, at the latest a good while after the first: copying in many
/// files makes a handful of calls.
class FolderWatchHub final : public FolderNumbers, public std::enable_shared_from_this<FolderWatchHub>
{
public:
    static constexpr std::chrono::milliseconds quietTime{100};
    static constexpr std::chrono::milliseconds longestDelay{1000};

    /// The process's one, which lives as long as somebody holds it; null when the system has no queue to spare.
    static std::shared_ptr<FolderWatchHub> shared();

    FolderWatchHub();
    ~FolderWatchHub() override;
    FolderWatchHub(const FolderWatchHub &) = delete;
    FolderWatchHub &operator=(const FolderWatchHub &) = delete;

    bool isOpen() const { return m_inotify.isOpen(); }

    enum class Packages {
        /// Find them.
        Search,
        /// The caller lists the folder anyway, and adds them.
        AddedByCaller
    };
    /// The watch of that path, which counts as unchanged from now on. Null when it cannot be watched.
    std::shared_ptr<FolderWatch> watchFrom(
        const QByteArray &path, const FolderMonitorOptions &options, Packages packages);
    /// Null when there is none.
    std::shared_ptr<FolderWatch> existing(const QByteArray &path, const FolderMonitorOptions &options);
    /// The watch of that path as it is, changes included; a new one where there is none.
    std::shared_ptr<FolderWatch> watchOf(const QByteArray &path, const FolderMonitorOptions &options);

    /// Takes in what the kernel holds.
    void readEvents();

    /// From the first of equally many calls to the last, no changes are told; they are afterwards.
    void beginSilence() { ++m_silences; }
    void endSilence();

    // FolderNumbers

    std::optional<int> watch(
        const QByteArray &folder, FolderWatch &owner, WatchedRole role, int *error = nullptr) override;
    std::optional<int> numberOf(const QByteArray &folder) override { return m_inotify.add(folder); }
    void forget(int number, const FolderWatch &owner) override;
    void noteChange(const std::weak_ptr<FolderWatch> &watch) override;
    void noteEnd(const FolderWatch &watch) override;

private:
    struct Place
    {
        FolderWatch *owner;
        WatchedRole role;
        QByteArray folder;
    };

    std::shared_ptr<FolderWatch> makeWatch(
        const QByteArray &path, const FolderMonitorOptions &options, Packages packages);
    void rearmEverything();
    void handle(const Inotify::Event &event);
    void scheduleTelling();
    void tell();

    Inotify m_inotify;
    std::unique_ptr<QSocketNotifier> m_notifier;
    /// Several for a folder that is watched by several paths.
    std::unordered_multimap<int, Place> m_places;
    std::unordered_multimap<QByteArray, std::weak_ptr<FolderWatch>> m_watches;
    /// What has changed and was not told yet.
    std::vector<std::weak_ptr<FolderWatch>> m_changed;
    bool m_hasNews = false;
    std::unique_ptr<ScheduledCall> m_telling;
    std::optional<std::chrono::milliseconds> m_firstChange;
    int m_silences = 0;
};
