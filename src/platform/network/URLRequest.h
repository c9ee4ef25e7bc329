#pragma once

#include <QUrl>

#include <chrono>
#include <optional>

/// What is asked of a server. A plain value.
struct URLRequest
{
    enum class Method {
        Get,
        /// The answer without its body.
        Head
    };

    QUrl url;
    /// For how long the server may be silent before the request fails, and for how long connecting to it may take; nil:
    /// as the session's configuration says.
    std::optional<std::chrono::milliseconds> timeoutInterval;
    Method method = Method::Get;
};
