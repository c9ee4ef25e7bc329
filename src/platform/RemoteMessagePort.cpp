#include "platform/RemoteMessagePort.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QtEndian>

namespace {

constexpr std::chrono::milliseconds connectTimeout(1000);

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

} // namespace

RemoteMessagePort::RemoteMessagePort(std::unique_ptr<QLocalSocket> socket)
    : m_socket(std::move(socket))
{ }

RemoteMessagePort::~RemoteMessagePort() = default;

std::unique_ptr<RemoteMessagePort> RemoteMessagePort::create(const QString &name)
{
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(name, QIODevice::WriteOnly);
    if (!socket->waitForConnected(int(connectTimeout.count())))
        return nullptr;
    return std::unique_ptr<RemoteMessagePort>(new RemoteMessagePort(std::move(socket)));
}

bool RemoteMessagePort::isValid() const
{
    return m_socket->state() == QLocalSocket::ConnectedState;
}

bool RemoteMessagePort::sendRequest(quint32 messageID, const QByteArray &data, std::chrono::milliseconds sendTimeout)
{
    if (m_socket->write(bigEndian(messageID) + bigEndian(quint32(data.size())) + data) < 0)
        return false; // the other end has gone
    const QDeadlineTimer deadline(sendTimeout);
    while (m_socket->bytesToWrite() > 0) {
        if (!m_socket->waitForBytesWritten(int(deadline.remainingTime())))
            return false;
    }
    return true;
}
