#pragma once

#include <QHash>
#include <QString>

#include <deque>
#include <map>
#include <optional>
#include <set>

/// Names a transfer for as long as the program runs; later ones have higher numbers.
using TransferID = quint64;

/// Decides which waiting transfer starts next. Knows hosts by their names only; does no I/O.
///
/// What is limited are connections, to one host and in all: a host that serves many transfers over one connection
/// (HTTP/2) counts as one. Hosts take turns, the transfers of one host start in the order of their numbers.
class TransferQueue
{
public:
    static constexpr int connectionsPerHost = 6;
    static constexpr int connectionsInAll = 32;
    /// What servers usually allow on one connection.
    static constexpr int transfersPerMultiplexingHost = 100;

    void add(TransferID transfer, const QString &host);
    /// A transfer that waits no longer or runs no longer.
    void remove(TransferID transfer);
    /// The next transfer that may start now, which then counts as running.
    std::optional<TransferID> startNext();
    /// What the host of a running transfer has shown. A host counts as not multiplexing until then.
    void setMultiplexing(TransferID transfer, bool multiplexing);

private:
    struct Host
    {
        std::set<TransferID> waiting;
        int running = 0;
        bool multiplexing = false;
        bool isInRotation = false;

        int connections() const { return multiplexing ? qMin(running, 1) : running; }
    };
    using Hosts = std::map<QString, Host>;

    bool mayStart(const Host &host) const;
    template <class Change>
    void change(Host &host, Change change);
    void joinRotation(Hosts::iterator host);

    /// Stay once they are known: that a host multiplexes is worth remembering.
    Hosts m_hosts;
    /// Every host with waiting transfers, whose turn comes first at the front.
    std::deque<Hosts::iterator> m_rotation;
    QHash<TransferID, Hosts::iterator> m_hostOfTransfer;
    int m_connections = 0;
};
