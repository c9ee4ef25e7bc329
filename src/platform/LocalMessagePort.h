#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

/// The receiving end of a message port: a named place on this computer to which other programs of the same user send.
///
/// A message is its number and its size, each as four bytes, highest first, and then its data. A sender of anything
/// else, or of more than 64 MB at once, is cut off. Main thread only; needs its event loop.
class KORVAN_EXPORT LocalMessagePort
{
public:
    using Handler = std::function<void(quint32 messageID, const QByteArray &data)>;

    /// Receives from now on; the handler may destroy the port. Null when somebody else listens under the name, or the
    /// name cannot be used. What a program that died has left behind is no obstacle.
    static std::unique_ptr<LocalMessagePort> create(const QString &name, Handler handler);
    ~LocalMessagePort();

private:
    class Server;

    explicit LocalMessagePort(std::unique_ptr<Server> server);

    std::unique_ptr<Server> m_server;
};
