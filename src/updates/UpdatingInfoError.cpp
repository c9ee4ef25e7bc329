#include "updates/UpdatingInfoError.h"

#include "localization/Localizable.h"
#include "updates/FeedLimits.h"

using namespace Qt::StringLiterals;

namespace {

QString sentenceAbout(const QString &feed, UpdatingInfoErrorCode code)
{
    switch (code) {
    case UpdatingInfoErrorCode::TooLarge:
        return Localizable::tr("The update feed “%1” is larger than %2 MB.")
            .arg(feed, QString::number(largestFeed / (1024 * 1024)));
    case UpdatingInfoErrorCode::NotJSON:
        return Localizable::tr("The update feed “%1” is not valid JSON.").arg(feed);
    case UpdatingInfoErrorCode::NotAFeed:
        return Localizable::tr("The update feed “%1” has neither a version with a download URL nor a list of items.")
            .arg(feed);
    case UpdatingInfoErrorCode::NothingOffered:
        return Localizable::tr("The update feed “%1” offers no version that can be downloaded.").arg(feed);
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
    return {updatingInfoErrorDomain(), static_cast<int>(code), sentenceAbout(feedURL.toDisplayString(), code)};
}
