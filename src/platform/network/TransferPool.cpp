#include "platform/network/TransferPool.h"

#include "platform/network/URLError.h"

#include <algorithm>
#include <vector>

TransferPool::TransferPool(const std::atomic<bool> &stopping)
    : m_stopping(stopping)
    , m_multi(curl_multi_init())
{
    Q_CHECK_PTR(m_multi.get());
    curl_multi_setopt(m_multi.get(), CURLMOPT_MAX_HOST_CONNECTIONS, long{TransferQueue::connectionsPerHost});
    curl_multi_setopt(
        m_multi.get(), CURLMOPT_MAX_CONCURRENT_STREAMS, long{TransferQueue::transfersPerMultiplexingHost});
    curl_multi_setopt(m_multi.get(), CURLMOPT_MAXCONNECTS, long{TransferQueue::connectionsInAll});
}

TransferPool::~TransferPool()
{
    clear();
}

TransferID TransferPool::start(std::unique_ptr<Transfer> transfer)
{
    const TransferID id = ++m_lastID;
    m_queue.add(id, transfer->host());
    m_transfers.emplace(id, std::move(transfer));
    return id;
}

void TransferPool::cancel(TransferID transfer)
{
    const auto found = m_transfers.find(transfer);
    if (found == m_transfers.end())
        return;
    found->second->fail(urlError(URLErrorCode::Cancelled, found->second->url()));
    finish(transfer);
}

void TransferPool::clear()
{
    while (!m_transfers.empty())
        take(m_transfers.begin()->first);
}

void TransferPool::advance()
{
    int running = 0;
    startWaiting();
    excuseBusyTime();
    curl_multi_perform(m_multi.get(), &running);
    m_lastReading = StallWatch::Clock::now();
    takeEnded();
    failStalled(m_lastReading);
    startWaiting(); // so that wait() waits for them too
}

/// What servers sent while this thread was in receivers has waited to be read: that was nobody's silence. Little time
/// is gathered until it is worth the walk over all transfers.
void TransferPool::excuseBusyTime()
{
    constexpr std::chrono::milliseconds worthExcusing(20);
    m_busy += StallWatch::Clock::now() - m_lastReading - m_waited;
    if (m_busy < worthExcusing)
        return;
    for (const auto &[handle, id] : m_running)
        m_transfers.at(id)->postponeStall(m_busy);
    m_busy = {};
}

void TransferPool::startWaiting()
{
    while (!m_stopping) {
        const auto id = m_queue.startNext();
        if (!id)
            return;
        Transfer &transfer = *m_transfers.at(*id);
        if (!transfer.prepare()) {
            finish(*id);
            continue;
        }
        m_running.emplace(transfer.handle(), *id);
        curl_multi_add_handle(m_multi.get(), transfer.handle());
        const auto now = StallWatch::Clock::now();
        m_nextStallCheck = std::min(m_nextStallCheck, transfer.stallDeadline(now));
    }
}

void TransferPool::takeEnded()
{
    int left = 0;
    while (!m_stopping) {
        const CURLMsg *message = curl_multi_info_read(m_multi.get(), &left);
        if (!message)
            return;
        if (message->msg == CURLMSG_DONE)
            requestEnded(m_running.at(message->easy_handle), message->data.result);
    }
}

void TransferPool::requestEnded(TransferID id, CURLcode code)
{
    Transfer &transfer = *m_transfers.at(id);
    const Transfer::Next next = transfer.requestEnded(code);
    if (code == CURLE_OK)
        m_queue.setMultiplexing(id, transfer.wasMultiplexing());
    if (next == Transfer::Next::Finish) {
        finish(id);
        return;
    }
    curl_multi_remove_handle(m_multi.get(), transfer.handle());
    m_running.erase(transfer.handle());
    m_queue.remove(id);
    m_queue.add(id, transfer.host()); // it may lead to another one, with limits of its own
}

void TransferPool::failStalled(StallWatch::Clock::time_point now)
{
    if (now < m_nextStallCheck)
        return;
    std::vector<TransferID> stalled;
    m_nextStallCheck = StallWatch::Clock::time_point::max();
    for (const auto &[handle, id] : m_running) {
        const auto deadline = m_transfers.at(id)->stallDeadline(now);
        if (deadline <= now)
            stalled.push_back(id);
        else
            m_nextStallCheck = std::min(m_nextStallCheck, deadline);
    }
    for (const TransferID id : stalled) {
        if (m_stopping)
            return;
        Transfer &transfer = *m_transfers.at(id);
        transfer.fail(urlError(URLErrorCode::TimedOut, transfer.url()));
        finish(id);
    }
}

std::unique_ptr<Transfer> TransferPool::take(TransferID id)
{
    const auto found = m_transfers.find(id);
    std::unique_ptr<Transfer> transfer = std::move(found->second);
    m_transfers.erase(found);
    m_queue.remove(id);
    if (transfer->handle() && m_running.erase(transfer->handle()) > 0)
        curl_multi_remove_handle(m_multi.get(), transfer->handle());
    return transfer;
}

void TransferPool::finish(TransferID id)
{
    const auto transfer = take(id);
    transfer->finish();
}

void TransferPool::wait()
{
    using namespace std::chrono;
    constexpr milliseconds longest = hours(1);
    const auto begin = StallWatch::Clock::now();
    const auto untilCheck = ceil<milliseconds>(m_nextStallCheck - begin);
    const auto timeout = std::clamp(untilCheck, milliseconds(0), longest);
    curl_multi_poll(m_multi.get(), nullptr, 0, static_cast<int>(timeout.count()), nullptr);
    m_waited = StallWatch::Clock::now() - begin;
}

void TransferPool::wake()
{
    curl_multi_wakeup(m_multi.get());
}
