#include "updates/JSONUpdateFeed.h"

#include "platform/JSON.h"
#include "updates/UpdatingInfoError.h"

#include <optional>

namespace {

/// What an object of the feed holds, the last value of a key that stands there repeatedly.
struct Members
{
    std::optional<JSONView> version;
    std::optional<JSONView> downloadURL;
    std::optional<JSONView> items;
};

Members membersOf(const JSONView &object)
{
    Members members;
    object.forEachMember([&](std::string_view key, JSONView value) {
        if (key == "version")
            members.version = value;
        else if (key == "downloadURL")
            members.downloadURL = value;
        else if (key == "items")
            members.items = value;
    });
    return members;
}

void appendCandidate(const Members &members, std::vector<UpdateCandidate> &candidates)
{
    // Numbers are no versions: 1.10 would come out as 1.1.
    const auto version = members.version ? members.version->string() : std::nullopt;
    const auto downloadURL = members.downloadURL ? members.downloadURL->string() : std::nullopt;
    if (version && downloadURL)
        candidates.push_back({*version, *downloadURL});
}

} // namespace

Result<std::vector<UpdateCandidate>> readJSONUpdateFeed(const QByteArray &json, const QUrl &feedURL)
{
    JSONParser parser;
    const auto root = parser.parse(json);
    if (!root)
        return updatingInfoError(UpdatingInfoErrorCode::NotJSON, feedURL);

    const auto members = membersOf(root.value());
    const bool hasItems = members.items && members.items->isArray();
    if (!hasItems && !members.version && !members.downloadURL)
        return updatingInfoError(UpdatingInfoErrorCode::NotAFeed, feedURL);

    std::vector<UpdateCandidate> candidates;
    appendCandidate(members, candidates);
    if (hasItems)
        members.items->forEachElement([&](JSONView item) { appendCandidate(membersOf(item), candidates); });
    return candidates;
}
