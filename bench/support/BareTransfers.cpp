#include "support/BareTransfers.h"

namespace {

std::size_t append(char *bytes, std::size_t size, std::size_t count, void *answer)
{
    static_cast<std::string *>(answer)->append(bytes, size * count);
    return size * count;
}

} // namespace

BareTransfers::BareTransfers(long connectionsPerHost, long connectionsInAll, long streamsPerConnection)
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
    m_multi.reset(curl_multi_init());
    curl_multi_setopt(m_multi.get(), CURLMOPT_MAX_HOST_CONNECTIONS, connectionsPerHost);
    curl_multi_setopt(m_multi.get(), CURLMOPT_MAX_TOTAL_CONNECTIONS, connectionsInAll);
    curl_multi_setopt(m_multi.get(), CURLMOPT_MAXCONNECTS, connectionsInAll);
    curl_multi_setopt(m_multi.get(), CURLMOPT_MAX_CONCURRENT_STREAMS, streamsPerConnection);
}

void BareTransfers::fetch(const QList<QByteArray> &urls, const QByteArray &certificateAuthorityFile)
{
    m_bytesFetched = 0;
    for (const auto &url : urls)
        add(url, certificateAuthorityFile);
    while (!m_answers.empty()) {
        int running = 0;
        curl_multi_perform(m_multi.get(), &running);
        takeEnded();
        if (!m_answers.empty())
            curl_multi_poll(m_multi.get(), nullptr, 0, 1000, nullptr);
    }
}

void BareTransfers::add(const QByteArray &url, const QByteArray &certificateAuthorityFile)
{
    CURL *const handle = curl_easy_init();
    const bool isPlain = url.startsWith("http:");
    curl_easy_setopt(handle, CURLOPT_URL, url.constData());
    curl_easy_setopt(
        handle, CURLOPT_HTTP_VERSION, isPlain ? long{CURL_HTTP_VERSION_1_1} : long{CURL_HTTP_VERSION_2TLS});
    curl_easy_setopt(handle, CURLOPT_PIPEWAIT, isPlain ? 0L : 1L);
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    if (!certificateAuthorityFile.isEmpty())
        curl_easy_setopt(handle, CURLOPT_CAINFO, certificateAuthorityFile.constData());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &m_answers[handle]);
    curl_multi_add_handle(m_multi.get(), handle);
}

void BareTransfers::takeEnded()
{
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi.get(), &left)) {
        CURL *const handle = message->easy_handle;
        long status = 0;
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
        if (message->data.result != CURLE_OK || status != 200)
            qFatal("bare transfer: %s, status %ld", curl_easy_strerror(message->data.result), status);
        m_bytesFetched += qsizetype(m_answers.at(handle).size());
        curl_multi_remove_handle(m_multi.get(), handle);
        curl_easy_cleanup(handle);
        m_answers.erase(handle);
    }
}
