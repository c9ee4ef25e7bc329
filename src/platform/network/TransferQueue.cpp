#include "platform/network/TransferQueue.h"

void TransferQueue::add(TransferID transfer, const QString &host)
{
    const auto found = m_hosts.try_emplace(host).first;
    found->second.waiting.insert(transfer);
    m_hostOfTransfer.insert(transfer, found);
    joinRotation(found);
}

void TransferQueue::remove(TransferID transfer)
{
    const auto entry = m_hostOfTransfer.constFind(transfer);
    if (entry == m_hostOfTransfer.constEnd())
        return;
    Host &host = entry.value()->second;
    m_hostOfTransfer.erase(entry);
    if (host.waiting.erase(transfer) == 0)
        change(host, [&host] { --host.running; });
}

std::optional<TransferID> TransferQueue::startNext()
{
    for (auto turn = m_rotation.begin(); turn != m_rotation.end();) {
        const Hosts::iterator found = *turn;
        Host &host = found->second;
        if (!host.waiting.empty() && !mayStart(host)) {
            ++turn;
            continue;
        }
        turn = m_rotation.erase(turn);
        host.isInRotation = false;
        if (host.waiting.empty())
            continue;
        const TransferID transfer = *host.waiting.begin();
        host.waiting.erase(host.waiting.begin());
        change(host, [&host] { ++host.running; });
        if (!host.waiting.empty())
            joinRotation(found);
        return transfer;
    }
    return {};
}

void TransferQueue::setMultiplexing(TransferID transfer, bool multiplexing)
{
    const auto entry = m_hostOfTransfer.constFind(transfer);
    if (entry == m_hostOfTransfer.constEnd())
        return;
    Host &host = entry.value()->second;
    change(host, [&host, multiplexing] { host.multiplexing = multiplexing; });
}

bool TransferQueue::mayStart(const Host &host) const
{
    if (host.multiplexing && host.running > 0)
        return host.running < transfersPerMultiplexingHost;
    return m_connections < connectionsInAll && host.running < connectionsPerHost;
}

template <class Change>
void TransferQueue::change(Host &host, Change change)
{
    m_connections -= host.connections();
    change();
    m_connections += host.connections();
}

void TransferQueue::joinRotation(Hosts::iterator host)
{
    if (!host->second.isInRotation)
        m_rotation.push_back(host);
    host->second.isInRotation = true;
}
