#pragma once

#include "platform/network/URLSession.h"
#include "platform/script/ScriptHost.h"
#include "platform/script/ScriptObject.h"
#include "platform/script/ScriptValue.h"

#include <QVariantList>
#include <QVariantMap>

#include <memory>
#include <unordered_map>

/// The service "fetch": HTTP requests of one session over the library's transfers, with their rules for certificates,
/// encryption and redirects. Requests that are under way keep the session running, and end with it. Main thread only.
class FetchService final : public ScriptObject
{
public:
    /// A larger answer is refused, in bytes.
    static constexpr qint64 largestAnswer = 64 * 1024 * 1024;

    explicit FetchService(const std::shared_ptr<ScriptHost> &host)
        : m_host(host)
    { }
    ~FetchService() override;

    /// Starts a request: a dictionary with "url", "method", "headers" (a list of pairs), "body" (bytes; none when it is
    /// missing) and "redirect" ("follow", or anything else for the redirect itself). The callback gets why it has
    /// failed (null when it has not) and the response: "url", "status", "statusText", "headers" and "body". Answers the
    /// request's number. Throws a ScriptException for a request that cannot be sent.
    double start(const QVariantMap &request, const QVariant &callback);
    /// Ends a request without a call. Nothing for one that has ended.
    void cancel(double number);

    const ScriptClass &scriptClass() const override;

private:
    struct Request
    {
        std::shared_ptr<URLSessionDataTask> task;
        ScriptValue callback;
        std::shared_ptr<void> keptRunning;
    };

    void finish(
        quint64 number, const QByteArray &body, const URLResponse &response, const std::optional<KRError> &error);

    std::weak_ptr<ScriptHost> m_host;
    std::unordered_map<quint64, Request> m_requests;
    quint64 m_latestNumber = 0;
};
