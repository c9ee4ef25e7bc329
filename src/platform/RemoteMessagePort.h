#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>

class QLocalSocket;

/// The sending end of a message port: a named place on this computer where another program listens.
///
/// A message is its number and its size, each as four bytes, highest first, and then its data.
class RemoteMessagePort
{
public:
    /// The port of that name; null when nobody listens there.
    static std::unique_ptr<RemoteMessagePort> create(const QString &name);
    ~RemoteMessagePort();

    bool isValid() const;
    /// Sends and waits until the system has taken all of it, or the time is over. No answer is awaited.
    bool sendRequest(quint32 messageID, const QByteArray &data, std::chrono::milliseconds sendTimeout);

private:
    explicit RemoteMessagePort(std::unique_ptr<QLocalSocket> socket);

    std::unique_ptr<QLocalSocket> m_socket;
};
