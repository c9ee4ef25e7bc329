#pragma once

#include <QUrl>

#include <chrono>
#include <optional>

/// What is asked of a server: a GET of one URL. A plain value.
struct URLRequest
{
    QUrl url;
    /// For how long the server may be silent before the request fails; nil: as the session's configuration says.
    std::optional<std::chrono::milliseconds> timeoutInterval;
};
