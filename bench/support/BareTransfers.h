#pragma once

#include <QByteArray>
#include <QList>

#include <curl/curl.h>

#include <memory>
#include <string>
#include <unordered_map>

/// The transfer library alone, in one thread: all requests at once, and its own limits for connections; answers into
/// memory. Connections are kept from one call to the next. What fails ends the program.
class BareTransfers
{
public:
    BareTransfers(long connectionsPerHost, long connectionsInAll, long streamsPerConnection);

    /// `certificateAuthorityFile` may be empty.
    void fetch(const QList<QByteArray> &urls, const QByteArray &certificateAuthorityFile);
    /// The answers of the last call, together.
    qsizetype bytesFetched() const { return m_bytesFetched; }

private:
    struct MultiDeleter
    {
        void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
    };

    void add(const QByteArray &url, const QByteArray &certificateAuthorityFile);
    void takeEnded();

    std::unique_ptr<CURLM, MultiDeleter> m_multi;
    std::unordered_map<CURL *, std::string> m_answers;
    qsizetype m_bytesFetched = 0;
};
