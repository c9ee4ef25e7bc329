#pragma once

#include "updates/UpdateCandidates.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <optional>
#include <vector>

/// The archives that a Sparkle appcast offers, in its order; nil when it is no well-formed XML up to its end, declares
/// entities or the like, or is nested too deep. Well-formed XML that is no appcast offers none.
///
/// Elements of RSS are those in the namespace of the root element `rss`, those of Sparkle are known by their URI
/// whatever the prefix. An item offers each of its enclosures; passed over are those without a URL or version, deltas,
/// archives for other systems and items of a channel that one has to ask for. Nothing is fetched. Reentrant.
std::optional<std::vector<UpdateCandidate>> readSparkleAppcast(QXmlStreamReader &parser);

/// The same of a document's bytes: UTF-8, or UTF-16 with its byte-order mark, or Latin-1 where it says so. Nil also for
/// what the parser would take very long over (see XMLBounds.h).
std::optional<std::vector<UpdateCandidate>> readSparkleAppcast(const QByteArray &xml);
