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

    friend bool operator==(const URLResponse &, const URLResponse &) = default;
};
