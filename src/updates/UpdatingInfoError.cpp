#include "updates/UpdatingInfoError.h"

#include "updates/FeedLimits.h"

using namespace Qt::StringLiterals;

namespace {

/// What is wrong, as the end of a sentence about the feed.
QString predicateOf(UpdatingInfoErrorCode code)
{
    switch (code) {
    case UpdatingInfoErrorCode::TooLarge:
        return u"is larger than %1 MB."_s.arg(largestFeed / (1024 * 1024));
    case UpdatingInfoErrorCode::NotJSON:
        return u"is not valid JSON."_s;
    case UpdatingInfoErrorCode::NotAFeed:
        return u"has neither a version with a download URL nor a list of items."_s;
    case UpdatingInfoErrorCode::NothingOffered:
        return u"offers no version that can be downloaded."_s;
    }
    return {};
}

} // namespace

QString updatingInfoErrorDomain()
{
    return u"KRUpdatingInfoErrorDomain"_s;
}

KRError updatingInfoError(UpdatingInfoErrorCode code, const QUrl &feedURL)
{
    return {updatingInfoErrorDomain(), static_cast<int>(code),
        u"The update feed “%1” "_s.arg(feedURL.toDisplayString()) + predicateOf(code)};
}
