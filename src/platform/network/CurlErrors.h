#pragma once

#include "platform/KRError.h"

#include <QUrl>

#include <curl/curl.h>

/// What the transfer library's code means for the URL. `code` is not CURLE_OK.
KRError transferError(CURLcode code, const QUrl &url);
