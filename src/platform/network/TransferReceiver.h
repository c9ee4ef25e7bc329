#pragma once

#include "platform/KRError.h"
#include "platform/network/URLResponse.h"

#include <QByteArrayView>

#include <optional>

/// Who takes what one transfer brings. Everything is called on the network thread, where only one call is made at a
/// time for all transfers together.
class TransferReceiver
{
public:
    virtual ~TransferReceiver() = default;

    /// The next bytes of the body, decoded, none of a redirect's body. `expectedSize` is the size of the whole body, -1
    /// when the server has not told. An error that is answered ends the transfer.
    virtual std::optional<KRError> receive(QByteArrayView bytes, qint64 expectedSize) = 0;

    /// The end, exactly once, unless the network thread is stopped before. Without an error the body is complete,
    /// whatever the response's status; with one the response is what was known of it.
    virtual void finish(const URLResponse &response, const std::optional<KRError> &error) = 0;
};
