#include "platform/network/CurlErrors.h"

#include "platform/network/URLError.h"

namespace {

URLErrorCode errorCode(CURLcode code)
{
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return URLErrorCode::TimedOut;
    case CURLE_URL_MALFORMAT:
        return URLErrorCode::BadURL;
    case CURLE_COULDNT_RESOLVE_HOST:
        return URLErrorCode::CannotFindHost;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
    case CURLE_COULDNT_CONNECT:
        return URLErrorCode::CannotConnectToHost;
    case CURLE_GOT_NOTHING:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return URLErrorCode::NetworkConnectionLost;
    case CURLE_UNSUPPORTED_PROTOCOL: // of the answer: the URL's scheme is known to be supported
    case CURLE_WEIRD_SERVER_REPLY:
        return URLErrorCode::BadServerResponse;
    case CURLE_BAD_CONTENT_ENCODING:
        return URLErrorCode::CannotDecodeData;
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CONNECT_ERROR:
        return URLErrorCode::SecureConnectionFailed;
    case CURLE_PEER_FAILED_VERIFICATION:
        return URLErrorCode::CertificateUntrusted;
    default:
        return URLErrorCode::Unknown;
    }
}

} // namespace

KRError transferError(CURLcode code, const QUrl &url)
{
    const URLErrorCode meaning = errorCode(code);
    return urlError(
        meaning, url, meaning == URLErrorCode::Unknown ? QString::fromUtf8(curl_easy_strerror(code)) : QString());
}
