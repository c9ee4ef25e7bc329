// Any bytes: an error, or an offer that can be fetched and is the same in a feed of its own.

#include "platform/JSONText.h"
#include "updates/FeedLimits.h"
#include "updates/UpdatingInfo.h"

#include <QVariantMap>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

namespace {

const QUrl &feedURL()
{
    static const QUrl url(QStringLiteral("https://example.com/tidy/feed.json"));
    return url;
}

void checkOffer(const UpdatingInfo &info)
{
    const auto scheme = info.downloadURL().scheme();
    const bool isWeb = scheme == QLatin1String("https") || scheme == QLatin1String("http");
    if (!isWeb || info.downloadURL().host().isEmpty() || info.versionID().trimmed().isEmpty())
        qFatal("offers %s at %s", qPrintable(info.versionID()), info.downloadURL().toEncoded().constData());

    // Written out: a "#" in a fragment is one QUrl before it was encoded and another one behind.
    const auto url = info.downloadURL().toEncoded();
    const QVariantMap feed{
        {QStringLiteral("version"), info.versionID()}, {QStringLiteral("downloadURL"), QString::fromLatin1(url)}};
    const auto json = jsonFromVariant(feed, JSONStyle::Compact);
    const auto again = UpdatingInfo::initWithData(json, feedURL());
    const bool isSame = again && again->versionID() == info.versionID() && again->downloadURL().toEncoded() == url;
    if (!isSame && url.size() <= longestDownloadURL) // which encoding may exceed
        qFatal("not the same from %s", json.constData());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char *>(data), qsizetype(size));
    KRError error;
    const auto info = UpdatingInfo::initWithData(json, feedURL(), &error);
    if (info.has_value() != error.localizedDescription.isEmpty())
        qFatal("an offer and an error, or neither");
    if (info)
        checkOffer(*info);
    return 0;
}
