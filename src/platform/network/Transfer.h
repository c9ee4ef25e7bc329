#pragma once

#include "platform/network/SessionConfiguration.h"
#include "platform/network/StallWatch.h"
#include "platform/network/TransferReceiver.h"
#include "platform/network/URLRequest.h"

#include <QByteArray>

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <optional>

/// One request from its beginning to the end of the answer, over as many redirects as are followed. Network thread
/// only.
///
/// Redirects are followed here, not in the transfer library: each of them has to pass the same rules as the first URL.
class Transfer
{
public:
    Transfer(URLRequest request, SessionConfiguration configuration, std::shared_ptr<TransferReceiver> receiver);
    ~Transfer() = default;
    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

    /// Scheme, host and port of the next request.
    QString host() const;

    /// Readies `handle()` for the next request; false when there is nothing to be asked, which leaves an error.
    bool prepare();
    /// Null before prepare(). Its private pointer leads back to the transfer.
    CURL *handle() const { return m_handle.get(); }

    enum class Next { Request, Finish };
    /// Takes the transfer library's verdict on the request that has ended, and says how it goes on.
    Next requestEnded(CURLcode code);
    /// Whether the connection of the request that has ended can carry many transfers at once.
    bool wasMultiplexing() const;

    void fail(KRError error);
    /// Tells the receiver.
    void finish();

    void postponeStall(StallWatch::Clock::duration duration)
    {
        m_connectWatch.postpone(duration);
        m_stallWatch.postpone(duration);
        m_wholeWatch.postpone(duration);
    }

    const QUrl &url() const { return m_url; }
    StallWatch::Clock::time_point stallDeadline(StallWatch::Clock::time_point now) const
    {
        return std::min({m_connectWatch.deadline(now), m_stallWatch.deadline(now), m_wholeWatch.deadline(now)});
    }

private:
    struct HandleDeleter
    {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    };

    static std::size_t bodyArrives(char *bytes, std::size_t size, std::size_t count, void *transfer);
    static std::size_t headerArrives(char *bytes, std::size_t size, std::size_t count, void *transfer);
    static int connecting(void *transfer, curl_socket_t, curlsocktype);
    static int connected(void *transfer, char *, char *, int, int);

    void setRules();
    void setRequest();
    void setCallbacks();
    bool takeBody(QByteArrayView bytes);
    void takeHeader(QByteArrayView line);
    void takeStatusLine(QByteArrayView line);
    bool skipRedirectBody(QByteArrayView bytes);
    qint64 contentLength() const;
    int statusCode() const;
    std::optional<QByteArray> header(const char *name) const;
    std::optional<QByteArray> redirectLocation() const;
    bool wasOnlyBusy() const;
    Next follow(const QByteArray &location);
    void changeRequestFor(const QUrl &target);
    HTTPHeaders responseHeaders() const;

    QUrl m_url;
    /// As it is sent next; redirects may change it.
    URLRequest m_request;
    struct ListDeleter
    {
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };
    std::unique_ptr<curl_slist, ListDeleter> m_headers;
    SessionConfiguration m_configuration;
    std::shared_ptr<TransferReceiver> m_receiver;
    std::chrono::milliseconds m_connectTimeout;
    /// Until a connection stands.
    StallWatch m_connectWatch;
    bool m_hasSocket = false;
    /// From then on.
    StallWatch m_stallWatch;
    /// From the first connection on, whatever arrives.
    StallWatch m_wholeWatch;
    std::unique_ptr<CURL, HandleDeleter> m_handle;
    std::optional<KRError> m_error;
    URLResponse m_response;
    int m_redirects = 0;
    /// Whether the head of the answer has come to its end.
    bool m_headIsWhole = false;
    QByteArray m_statusText;
    qint64 m_received = 0;
    /// Bytes of the redirect's body that this request has brought.
    qint64 m_skipped = 0;
};
