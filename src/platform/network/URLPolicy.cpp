#include "platform/network/URLPolicy.h"

#include "platform/network/URLError.h"

#include <QHostAddress>

using namespace Qt::StringLiterals;

bool isLoopback(const QUrl &url)
{
    return url.host() == u"localhost"_s || QHostAddress(url.host()).isLoopback();
}

std::optional<KRError> refusalToFetch(const QUrl &url)
{
    if (!url.isValid())
        return urlError(URLErrorCode::BadURL, url);
    if (url.scheme() != u"https"_s && url.scheme() != u"http"_s)
        return urlError(URLErrorCode::UnsupportedURL, url);
    if (url.host().isEmpty())
        return urlError(URLErrorCode::BadURL, url);
    if (url.scheme() == u"http"_s && !isLoopback(url))
        return urlError(URLErrorCode::PlainHTTPNotAllowed, url);
    return {};
}

std::optional<KRError> refusalToFollow(const QUrl &from, const QUrl &to)
{
    if (auto refusal = refusalToFetch(to))
        return refusal;
    if (from.scheme() == u"https"_s && to.scheme() != u"https"_s)
        return urlError(URLErrorCode::PlainHTTPNotAllowed, to);
    return {};
}

QUrl redirectTarget(const QUrl &from, const QByteArray &location)
{
    const QUrl target = QUrl::fromEncoded(location);
    return target.isValid() ? from.resolved(target) : QUrl();
}
