#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

class QXmlStreamReader;
struct UpdateOffer;

/// What an update feed offers: one version, and where its archive is. A feed that offers several counts by the highest
/// (LTCompareVersions), the earliest listed among equals; what is wrong with one item never costs the others.
///
/// Feeds come from strangers. Whatever they hold, the answer comes soon and nothing is fetched; docs/update-feeds.md
/// says what they may look like. A plain value; all functions are reentrant.
class KORVAN_EXPORT UpdatingInfo final
{
public:
    /// From a JSON feed, `initWithData:error:`. Relative download URLs are resolved against `feedURL`. Nil with an
    /// error when it is refused; the error stays untouched otherwise.
    static std::optional<UpdatingInfo> initWithData(
        const QByteArray &json, const QUrl &feedURL, KRError *error = nullptr);

    /// From a Sparkle appcast; nil when it is refused: XML that is not well-formed up to its end, offers nothing or
    /// exceeds a limit. Relative download URLs are resolved against `feedURL`.
    static std::optional<UpdatingInfo> sparkleXMLToUpdatingInfo(const QByteArray &xml, const QUrl &feedURL);

    /// The same with a parser that stands at its beginning, for XML of a trusted source: a parser that has the document
    /// already cannot be kept from a large one, nor from taking very long over a hostile one.
    static std::optional<UpdatingInfo> sparkleXMLToUpdatingInfoWithXmlParser(
        QXmlStreamReader &parser, const QUrl &feedURL);

    /// What was offered, exactly as the feed has it; neither empty nor with control characters.
    const QString &versionID() const { return m_versionID; }
    /// http or https, with a host.
    const QUrl &downloadURL() const { return m_downloadURL; }

    friend bool operator==(const UpdatingInfo &, const UpdatingInfo &) = default;

private:
    explicit UpdatingInfo(UpdateOffer offer);

    QString m_versionID;
    QUrl m_downloadURL;
};
