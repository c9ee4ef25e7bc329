#pragma once

#include "platform/KRError.h"
#include "platform/network/SessionConfiguration.h"
#include "platform/network/TransferQueue.h"
#include "platform/network/URLRequest.h"
#include "platform/network/URLResponse.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

class NetworkThread;

/// The end of a data task: the whole body, the server's response, an error. With an error the data is null (not so
/// after an empty body). An HTTP status that says "failed" is no error. Called once, on the network thread.
using DataCompletion =
    std::function<void(const QByteArray &data, const URLResponse &response, const std::optional<KRError> &error)>;

/// One request whose answer is held in memory. Thread-safe.
///
/// Dropping a task that was resumed does not end it; one that was not just goes, without a call.
class URLSessionDataTask
{
public:
    /// For URLSession.
    URLSessionDataTask(std::shared_ptr<NetworkThread> thread, SessionConfiguration configuration, URLRequest request,
        DataCompletion completionHandler);

    /// Starts it. Nothing for a task that was resumed before.
    void resume();
    /// Ends it with the error "cancelled". Nothing for one that has ended, or that was never resumed.
    void cancel();

private:
    std::shared_ptr<NetworkThread> m_thread;
    SessionConfiguration m_configuration;
    URLRequest m_request;
    std::mutex m_mutex;
    DataCompletion m_completionHandler;
    /// Set and read on the network thread.
    std::shared_ptr<std::optional<TransferID>> m_transfer;
};

/// Fetches small answers into memory. Thread-safe.
class URLSession
{
public:
    /// A larger answer to the shared session is refused.
    static constexpr qint64 largestSharedAnswer = 16 * 1024 * 1024;

    /// A longer transfer of the shared session fails: nobody waits for one that brings its bytes one by one.
    static constexpr std::chrono::milliseconds longestSharedTransfer{30'000};

    /// With the default configuration as it is at each call.
    static URLSession sharedSession();

    explicit URLSession(SessionConfiguration configuration);

    /// A task that waits to be resumed. When the process ends before the answer has come, nothing is called.
    std::shared_ptr<URLSessionDataTask> dataTaskWithRequest(URLRequest request, DataCompletion completionHandler) const;

private:
    SessionConfiguration m_configuration;
};
