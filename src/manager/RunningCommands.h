#pragma once

#include "commands/KRPluginCommand.h"
#include "manager/RunningCommand.h"
#include "platform/MainQueue.h"

#include <QList>

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <vector>

/// The commands whose sessions go on after their run, and the polls that notice when one of them has finished. Main
/// thread only.
///
/// Polls come after 1, 2, 4, … 60, 60, … seconds. Each poll that leaves a command running plans one more, whoever asked
/// for it, and none is taken back: this is deliberate, and so is the interval that all of them double together.
class RunningCommands
{
public:
    using Completion = KRPluginCommandManager::Completion;

    /// `changed`, which may be empty, is called after a command has come or gone.
    explicit RunningCommands(MainQueue &queue, std::function<void()> changed = {});
    /// The sessions that still run end without a word.
    ~RunningCommands();
    RunningCommands(const RunningCommands &) = delete;
    RunningCommands &operator=(const RunningCommands &) = delete;

    /// Keeps the command under its specifier, in place of another one, and polls at once. A null completion leaves an
    /// earlier one standing. Does nothing for a null command.
    void track(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete);
    /// Forgets the command and calls its completion; it is not torn down. Null when there is none.
    std::shared_ptr<KRPluginCommand> stopTracking(const KRPluginCommandSpecifier &specifier);
    std::shared_ptr<KRPluginCommand> command(const KRPluginCommandSpecifier &specifier) const;
    bool isEmpty() const { return m_entries.empty(); }
    /// In the order in which they came.
    QList<RunningCommand> list() const;
    /// Tears the command down, whatever it waits for, and ends it as one that has finished. Null when there is none.
    std::shared_ptr<KRPluginCommand> stop(const KRPluginCommandSpecifier &specifier);

    /// Asks every command whether it has finished; those that have are torn down, reported and forgotten.
    void cleanupFinished();
    /// Polls 0.1 seconds after the last of several calls.
    void pollSoon();

    /// In seconds; 0 when nothing is tracked.
    double lastTimerInterval() const { return m_lastTimerInterval; }

private:
    struct Entry
    {
        KRPluginCommandSpecifier specifier;
        std::shared_ptr<KRPluginCommand> command;
        Completion onComplete;
        /// Tells an entry from a later one under the same specifier.
        int serial;
        /// By the queue's clock.
        std::chrono::milliseconds since;
    };
    using Entries = std::vector<Entry>;

    Entries::iterator find(const KRPluginCommandSpecifier &specifier);
    Entries::iterator find(int serial);
    void finish(int serial);
    void tellChange() const;
    void planPoll();
    void wait();
    void pollDue();

    MainQueue &m_queue;
    std::function<void()> m_changed;
    Entries m_entries;
    int m_latestSerial = 0;
    double m_lastTimerInterval = 0;
    /// When the planned polls are due; those of the same millisecond are one.
    std::set<std::chrono::milliseconds> m_plannedPolls;
    std::unique_ptr<ScheduledCall> m_nextPoll;
    std::unique_ptr<ScheduledCall> m_soonPoll;
    /// Tells the polls, after each call of somebody else's code, whether this object still exists.
    std::shared_ptr<char> m_life;
};
