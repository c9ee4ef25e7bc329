// Any bytes: no offer, or one that can be fetched; and what is said to be within bounds is.

#include "platform/XMLBounds.h"
#include "updates/UpdatingInfo.h"

#include <QXmlStreamReader>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

namespace {

void checkOffer(const UpdatingInfo &info)
{
    const bool isWeb =
        info.downloadURL().scheme() == QLatin1String("https") || info.downloadURL().scheme() == QLatin1String("http");
    if (!isWeb || info.downloadURL().host().isEmpty() || info.versionID().trimmed().isEmpty())
        qFatal("offers %s at %s", qPrintable(info.versionID()), info.downloadURL().toEncoded().constData());
}

/// The bounds are found without parsing: whatever the parser sees must keep to them.
void checkBounds(const QByteArray &xml)
{
    if (!isXMLWithinBounds(xml))
        return;
    QXmlStreamReader parser(xml);
    while (!parser.atEnd()) {
        parser.readNext();
        if (parser.attributes().size() + parser.namespaceDeclarations().size() > mostXMLAttributes)
            qFatal("too many attributes at %lld", static_cast<long long>(parser.characterOffset()));
        if (!parser.entityDeclarations().isEmpty() || !parser.notationDeclarations().isEmpty())
            qFatal("declarations at %lld", static_cast<long long>(parser.characterOffset()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char *>(data), qsizetype(size));
    const QUrl feedURL(QStringLiteral("https://example.com/tidy/appcast.xml"));
    checkBounds(xml);
    if (const auto info = UpdatingInfo::sparkleXMLToUpdatingInfo(xml, feedURL))
        checkOffer(*info);
    return 0;
}
