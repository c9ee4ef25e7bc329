#pragma once

#include "platform/network/Transfer.h"
#include "platform/network/TransferQueue.h"

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <unordered_map>

/// All transfers, and the connections that they share. Network thread only, unless a function says otherwise.
class TransferPool
{
public:
    /// Once `stopping` is true no receiver is told anything any more; it has to outlive the pool.
    explicit TransferPool(const std::atomic<bool> &stopping);
    ~TransferPool();
    TransferPool(const TransferPool &) = delete;
    TransferPool &operator=(const TransferPool &) = delete;

    /// Queues a transfer. Nothing is told before this has returned.
    TransferID start(std::unique_ptr<Transfer> transfer);
    /// Ends a transfer with the error "cancelled"; nothing when it has ended already.
    void cancel(TransferID transfer);
    /// Forgets all transfers without a word.
    void clear();

    /// Does what can be done now, and tells the receivers.
    void advance();
    /// Waits until there is something to do again, or for wake().
    void wait();
    /// Ends the wait, or the next one. Any thread.
    void wake();

private:
    struct MultiDeleter
    {
        void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
    };

    void startWaiting();
    void takeEnded();
    void requestEnded(TransferID id, CURLcode code);
    void excuseBusyTime();
    void failStalled(StallWatch::Clock::time_point now);
    std::unique_ptr<Transfer> take(TransferID id);
    void finish(TransferID id);

    const std::atomic<bool> &m_stopping;
    std::unique_ptr<CURLM, MultiDeleter> m_multi;
    std::unordered_map<TransferID, std::unique_ptr<Transfer>> m_transfers;
    /// Those that the transfer library works on.
    std::unordered_map<CURL *, TransferID> m_running;
    TransferQueue m_queue;
    TransferID m_lastID = 0;
    /// Before this no transfer can count as stalled.
    StallWatch::Clock::time_point m_nextStallCheck = StallWatch::Clock::time_point::max();
    StallWatch::Clock::time_point m_lastReading = StallWatch::Clock::now();
    /// How long wait() has waited since then.
    StallWatch::Clock::duration m_waited{};
    /// Busy time that no transfer was excused for yet.
    StallWatch::Clock::duration m_busy{};
};
