#pragma once

#include "platform/KRError.h"

#include <QUrl>

/// Why a transfer failed, in the numbers of the platform's URL error domain.
enum class URLErrorCode {
    Unknown = -1,
    Cancelled = -999,
    BadURL = -1000,
    TimedOut = -1001,
    UnsupportedURL = -1002,
    CannotFindHost = -1003,
    CannotConnectToHost = -1004,
    NetworkConnectionLost = -1005,
    TooManyRedirects = -1007,
    BadServerResponse = -1011,
    CannotDecodeData = -1015,
    PlainHTTPNotAllowed = -1022,
    DataTooLarge = -1103,
    SecureConnectionFailed = -1200,
    CertificateUntrusted = -1202,
    CannotCreateFile = -3000,
    CannotWriteToFile = -3003
};

/// The error with a sentence that names the URL's host (the whole URL where it has none). `detail`, when not empty, is
/// added to the sentence. In the language of the installed translators. Any thread.
KRError urlError(URLErrorCode code, const QUrl &url, const QString &detail = {});
