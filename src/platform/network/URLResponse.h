#pragma once

#include <QUrl>

/// What a server answered, apart from the body. A plain value.
struct URLResponse
{
    /// Where the answer came from, after all redirects.
    QUrl url;
    /// The HTTP status; 0 when no server has answered.
    int statusCode = 0;

    friend bool operator==(const URLResponse &, const URLResponse &) = default;
};
