#pragma once

#include "platform/network/HTTPHeader.h"

#include <QUrl>

/// What a server answered, apart from the body. A plain value.
struct URLResponse
{
    /// Where the answer came from, after all redirects.
    QUrl url;
    /// The HTTP status; 0 when no server has answered.
    int statusCode = 0;
    /// Only when the request has asked for them.
    HTTPHeaders headers = {};
    /// What the server calls the status, in Latin-1; only when the request has asked for the headers. Newer versions of
    /// HTTP have none.
    QByteArray statusText = {};

    friend bool operator==(const URLResponse &, const URLResponse &) = default;
};
