#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class TransferPool;

/// The thread on which transfers run and their callbacks are made, one at a time. Thread-safe.
///
/// A callback that takes long holds up all transfers; one that waits for the main thread may wait for ever.
class NetworkThread
{
public:
    /// The one of the process, which runs from the first call until static objects are destroyed. What is pending then
    /// is dropped: nothing is called any more.
    static std::shared_ptr<NetworkThread> shared();

    NetworkThread();
    /// As stop(). Not on the thread itself.
    ~NetworkThread();
    NetworkThread(const NetworkThread &) = delete;
    NetworkThread &operator=(const NetworkThread &) = delete;

    /// Waits for the callback that is running, then ends the thread. Transfers and commands that are left are dropped
    /// without a call, later ones too. Not on the thread itself.
    void stop();

    bool isCurrentThread() const;
    /// Runs the command on the thread, in the order of the calls, never before this returns to a caller on the thread.
    void post(std::function<void()> command);
    /// Returns after the command has run, or when it never will because the thread was stopped. Not on the thread
    /// itself.
    void postAndWait(std::function<void()> command);

    /// On the thread only.
    TransferPool &transfers() { return *m_transfers; }

private:
    void run();
    void runCommands();
    std::vector<std::function<void()>> takeCommands();

    std::atomic<bool> m_stopping = false;
    std::unique_ptr<TransferPool> m_transfers;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_commands;
    std::thread m_thread;
    std::thread::id m_threadID;
};
