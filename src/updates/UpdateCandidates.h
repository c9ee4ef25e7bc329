#pragma once

#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

/// What a feed says about one archive, word for word and not yet checked.
struct UpdateCandidate
{
    QString version;
    /// May be relative to the feed.
    QString downloadURL;

    friend bool operator==(const UpdateCandidate &, const UpdateCandidate &) = default;
};

/// A version that can be fetched.
struct UpdateOffer
{
    QString version;
    /// http or https, with a host.
    QUrl downloadURL;
};

/// The candidate of the highest version among those that are usable, the earliest listed among equals; nil when none
/// is. Usable is a version that has a visible character, no control character and at most `longestVersion` of them,
/// with a URL that, taken relative to the feed's, is http or https and has a host. Reentrant.
std::optional<UpdateOffer> highestOffer(const std::vector<UpdateCandidate> &candidates, const QUrl &feedURL);
