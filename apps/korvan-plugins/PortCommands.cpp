#include "Commands.h"

#include "StopSignals.h"
#include "commands/KRPluginPortMessaging.h"
#include "platform/LocalMessagePort.h"

#include <QCoreApplication>

ExitCode listenOnPort(const PortOptions &port, Output &output)
{
    const StopSignals stopSignals([] { QCoreApplication::quit(); });
    const auto listener = LocalMessagePort::create(port.port, [&output](quint32, const QByteArray &data) {
        const auto message = QString::fromUtf8(data);
        output.documentLine({{QStringLiteral("message"), message}});
        output.line(message);
    });
    if (!listener) {
        output.error(QStringLiteral("Cannot listen on the port \"%1\".").arg(port.port));
        return ExitCode::Failed;
    }
    QCoreApplication::exec();
    return ExitCode::Done;
}

ExitCode sendToPort(const PortOptions &port, Output &output)
{
    const bool isSent = KRPluginPortMessaging::sendMessage(port.message, port.port);
    output.document({{QStringLiteral("sent"), isSent}});
    output.line(isSent ? QStringLiteral("Sent.") : QStringLiteral("Nobody listens on the port \"%1\".").arg(port.port));
    return isSent ? ExitCode::Done : ExitCode::Failed;
}
