#include "updates/UpdateCandidates.h"

#include "platform/ControlCharacters.h"
#include "platform/LTCompareVersions.h"
#include "updates/FeedLimits.h"

using namespace Qt::StringLiterals;

namespace {

bool isUsableVersion(const QString &version)
{
    return version.size() <= longestVersion && !version.trimmed().isEmpty() && !hasControlCharacter(version);
}

/// Empty when it is none that can be fetched.
QUrl usableURL(const QString &text, const QUrl &feedURL)
{
    const auto reference = text.trimmed();
    // An empty reference would lead back to the feed.
    if (reference.isEmpty() || reference.size() > longestDownloadURL || hasControlCharacter(reference))
        return {};
    const QUrl url(reference);
    const auto absolute = url.isValid() ? feedURL.resolved(url) : QUrl();
    const bool isWeb = absolute.scheme() == u"https"_s || absolute.scheme() == u"http"_s;
    return absolute.isValid() && isWeb && !absolute.host().isEmpty() ? absolute : QUrl();
}

} // namespace

std::optional<UpdateOffer> highestOffer(const std::vector<UpdateCandidate> &candidates, const QUrl &feedURL)
{
    std::optional<UpdateOffer> highest;
    for (const auto &candidate : candidates) {
        // The URL is looked at last: making it takes the longest.
        if (!isUsableVersion(candidate.version)
            || (highest && LTCompareVersions(highest->version, candidate.version) >= 0))
            continue;
        if (auto url = usableURL(candidate.downloadURL, feedURL); !url.isEmpty())
            highest = UpdateOffer{candidate.version, std::move(url)};
    }
    return highest;
}
