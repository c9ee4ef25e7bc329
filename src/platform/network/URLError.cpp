#include "platform/network/URLError.h"

using namespace Qt::StringLiterals;

namespace {

/// "%1" is the host.
QString sentence(URLErrorCode code)
{
    switch (code) {
    case URLErrorCode::Unknown:
        return u"The transfer from \"%1\" has failed"_s;
    case URLErrorCode::Cancelled:
        return u"The transfer from \"%1\" was cancelled"_s;
    case URLErrorCode::BadURL:
        return u"\"%1\" is not a valid URL"_s;
    case URLErrorCode::TimedOut:
        return u"The server \"%1\" has not answered in time"_s;
    case URLErrorCode::UnsupportedURL:
        return u"The URL of \"%1\" is neither http nor https"_s;
    case URLErrorCode::CannotFindHost:
        return u"A server named \"%1\" cannot be found"_s;
    case URLErrorCode::CannotConnectToHost:
        return u"The server \"%1\" cannot be reached"_s;
    case URLErrorCode::NetworkConnectionLost:
        return u"The connection to \"%1\" was lost"_s;
    case URLErrorCode::TooManyRedirects:
        return u"The server \"%1\" redirects too many times"_s;
    case URLErrorCode::BadServerResponse:
        return u"The server \"%1\" has sent an answer that is not HTTP"_s;
    case URLErrorCode::CannotDecodeData:
        return u"What the server \"%1\" has sent cannot be decoded"_s;
    case URLErrorCode::PlainHTTPNotAllowed:
        return u"The connection to \"%1\" would not be encrypted, which is not allowed"_s;
    case URLErrorCode::DataTooLarge:
        return u"The server \"%1\" sends more than is allowed"_s;
    case URLErrorCode::SecureConnectionFailed:
        return u"A secure connection to \"%1\" cannot be made"_s;
    case URLErrorCode::CertificateUntrusted:
        return u"The certificate of the server \"%1\" is not trusted"_s;
    case URLErrorCode::CannotCreateFile:
        return u"No file can be created for the download from \"%1\""_s;
    case URLErrorCode::CannotWriteToFile:
        return u"The download from \"%1\" cannot be written to its file"_s;
    }
    Q_UNREACHABLE();
}

} // namespace

KRError urlError(URLErrorCode code, const QUrl &url, const QString &detail)
{
    const QString host = url.host();
    const QString text = sentence(code).arg(host.isEmpty() ? url.toString() : host);
    return {
        u"NSURLErrorDomain"_s, static_cast<int>(code), detail.isEmpty() ? text + u'.' : text + u": "_s + detail + u'.'};
}
