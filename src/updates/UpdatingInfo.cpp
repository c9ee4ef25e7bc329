#include "updates/UpdatingInfo.h"

#include "platform/Result.h"
#include "updates/FeedLimits.h"
#include "updates/JSONUpdateFeed.h"
#include "updates/SparkleAppcast.h"
#include "updates/UpdateCandidates.h"
#include "updates/UpdatingInfoError.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

Result<UpdateOffer> offerOfJSON(const QByteArray &json, const QUrl &feedURL)
{
    if (json.size() > largestFeed)
        return updatingInfoError(UpdatingInfoErrorCode::TooLarge, feedURL);
    const auto candidates = readJSONUpdateFeed(json, feedURL);
    if (!candidates)
        return candidates.error();
    auto offer = highestOffer(candidates.value(), feedURL);
    if (!offer)
        return updatingInfoError(UpdatingInfoErrorCode::NothingOffered, feedURL);
    return *std::move(offer);
}

std::optional<UpdateOffer> offerOf(const std::optional<std::vector<UpdateCandidate>> &candidates, const QUrl &feedURL)
{
    return candidates ? highestOffer(*candidates, feedURL) : std::nullopt;
}

} // namespace

UpdatingInfo::UpdatingInfo(UpdateOffer offer)
    : m_versionID(std::move(offer.version))
    , m_downloadURL(std::move(offer.downloadURL))
{ }

std::optional<UpdatingInfo> UpdatingInfo::initWithData(const QByteArray &json, const QUrl &feedURL, KRError *error)
{
    auto offer = offerOfJSON(json, feedURL);
    if (offer)
        return UpdatingInfo(std::move(offer).value());
    if (error)
        *error = offer.error();
    return std::nullopt;
}

std::optional<UpdatingInfo> UpdatingInfo::sparkleXMLToUpdatingInfo(const QByteArray &xml, const QUrl &feedURL)
{
    if (xml.size() > largestFeed)
        return std::nullopt;
    auto offer = offerOf(readSparkleAppcast(xml), feedURL);
    return offer ? std::optional(UpdatingInfo(*std::move(offer))) : std::nullopt;
}

std::optional<UpdatingInfo> UpdatingInfo::sparkleXMLToUpdatingInfoWithXmlParser(
    QXmlStreamReader &parser, const QUrl &feedURL)
{
    auto offer = offerOf(readSparkleAppcast(parser), feedURL);
    return offer ? std::optional(UpdatingInfo(*std::move(offer))) : std::nullopt;
}
