#pragma once

#include "platform/Result.h"
#include "updates/UpdateCandidates.h"

#include <QByteArray>
#include <QUrl>

#include <vector>

/// The archives that a JSON feed offers, in its order, as docs/schemas/update-feed.schema.json describes it:
/// `{"version": …, "downloadURL": …}` or `{"items": [{"version": …, "downloadURL": …}, …]}`; an object with both offers
/// both. Unknown keys are ignored, and items in which one of the two is missing or no text are passed over.
///
/// The errors are NotJSON and NotAFeed; they name the feed by its URL. Reentrant.
Result<std::vector<UpdateCandidate>> readJSONUpdateFeed(const QByteArray &json, const QUrl &feedURL);
