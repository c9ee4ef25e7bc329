#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"

#include <QString>
#include <QUrl>

/// Why a JSON update feed was refused: the codes of `updatingInfoErrorDomain()`.
enum class UpdatingInfoErrorCode {
    /// Larger than `largestFeed` (4 MB); it was not looked at.
    TooLarge = 1,
    /// No JSON text at all, for example a server's error page.
    NotJSON = 2,
    /// JSON, but neither an object with a version or a download URL, nor one with a list of items.
    NotAFeed = 3,
    /// None of its items has both a usable version and a URL that can be fetched.
    NothingOffered = 4
};

/// "KRUpdatingInfoErrorDomain"
KORVAN_EXPORT QString updatingInfoErrorDomain();

/// The error with a sentence that names the feed. Reentrant.
KRError updatingInfoError(UpdatingInfoErrorCode code, const QUrl &feedURL);
