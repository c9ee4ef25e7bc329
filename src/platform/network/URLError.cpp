#include "platform/network/URLError.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

/// In English, without its full stop. "%1" is the host.
const char *sentence(URLErrorCode code)
{
    switch (code) {
    case URLErrorCode::Unknown:
        return QT_TRANSLATE_NOOP("Localizable", "The transfer from \"%1\" has failed");
    case URLErrorCode::Cancelled:
        return QT_TRANSLATE_NOOP("Localizable", "The transfer from \"%1\" was cancelled");
    case URLErrorCode::BadURL:
        return QT_TRANSLATE_NOOP("Localizable", "\"%1\" is not a valid URL");
    case URLErrorCode::TimedOut:
        return QT_TRANSLATE_NOOP("Localizable", "The server \"%1\" has not answered in time");
    case URLErrorCode::UnsupportedURL:
        return QT_TRANSLATE_NOOP("Localizable", "The URL of \"%1\" is neither http nor https");
    case URLErrorCode::CannotFindHost:
        return QT_TRANSLATE_NOOP("Localizable", "A server named \"%1\" cannot be found");
    case URLErrorCode::CannotConnectToHost:
        return QT_TRANSLATE_NOOP("Localizable", "The server \"%1\" cannot be reached");
    case URLErrorCode::NetworkConnectionLost:
        return QT_TRANSLATE_NOOP("Localizable", "The connection to \"%1\" was lost");
    case URLErrorCode::TooManyRedirects:
        return QT_TRANSLATE_NOOP("Localizable", "The server \"%1\" redirects too many times");
    case URLErrorCode::BadServerResponse:
        return QT_TRANSLATE_NOOP("Localizable", "The server \"%1\" has sent an answer that is not HTTP");
    case URLErrorCode::CannotDecodeData:
        return QT_TRANSLATE_NOOP("Localizable", "What the server \"%1\" has sent cannot be decoded");
    case URLErrorCode::PlainHTTPNotAllowed:
        return QT_TRANSLATE_NOOP(
            "Localizable", "The connection to \"%1\" would not be encrypted, which is not allowed");
    case URLErrorCode::DataTooLarge:
        return QT_TRANSLATE_NOOP("Localizable", "The server \"%1\" sends more than is allowed");
    case URLErrorCode::SecureConnectionFailed:
        return QT_TRANSLATE_NOOP("Localizable", "A secure connection to \"%1\" cannot be made");
    case URLErrorCode::CertificateUntrusted:
        return QT_TRANSLATE_NOOP("Localizable", "The certificate of the server \"%1\" is not trusted");
    case URLErrorCode::CannotCreateFile:
        return QT_TRANSLATE_NOOP("Localizable", "No file can be created for the download from \"%1\"");
    case URLErrorCode::CannotWriteToFile:
        return QT_TRANSLATE_NOOP("Localizable", "The download from \"%1\" cannot be written to its file");
    }
    Q_UNREACHABLE();
}

// The platform lies below the framework's localization functions, so it asks the same table as they do directly.

/// In English, one that `sentence()` answers.
QString translatedSentence(const char *english)
{
    return QCoreApplication::translate("Localizable", english);
}

QString ended(const QString &sentence, const QString &detail)
{
    if (detail.isEmpty()) {
        //: Ends a sentence of this table that has no full stop (%1).
        return QCoreApplication::translate("Localizable", "%1.").arg(sentence);
    }
    //: A sentence of this table that has no full stop (%1), and what exactly has happened (%2).
    return QCoreApplication::translate("Localizable", "%1: %2.").arg(sentence, detail);
}

} // namespace

KRError urlError(URLErrorCode code, const QUrl &url, const QString &detail)
{
    const QString host = url.host();
    const QString text = translatedSentence(sentence(code)).arg(host.isEmpty() ? url.toString() : host);
    return {u"NSURLErrorDomain"_s, static_cast<int>(code), ended(text, detail)};
}
