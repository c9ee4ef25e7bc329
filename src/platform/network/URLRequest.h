#pragma once

#include "platform/network/HTTPHeader.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <optional>

/// What is asked of a server. A plain value.
struct URLRequest
{
    enum class Method {
        Get,
        /// The answer without its body.
        Head,
        Post,
        Put,
        Patch,
        Delete,
        Options
    };
    enum class Redirects {
        Follow,
        /// The redirect itself is the answer.
        Answer
    };
    enum class ResponseHeaders { Drop, Keep };

    QUrl url;
    /// For how long the server may be silent before the request fails, and for how long connecting to it may take; nil:
    /// as the session's configuration says.
    std::optional<std::chrono::milliseconds> timeoutInterval;
    Method method = Method::Get;
    /// Sent beside the library's own, and in place of those of the same name. "Authorization" and "Cookie" are not sent
    /// on to another host. One that cannot be sent is an error of the caller.
    HTTPHeaders headers = {};
    /// What is sent; null for nothing.
    QByteArray body = {};
    Redirects redirects = Redirects::Follow;
    /// Whether the response is to have its header fields.
    ResponseHeaders responseHeaders = ResponseHeaders::Drop;
};
