#include "platform/SVGBounds.h"

#include "platform/XMLBounds.h"

#include <QXmlStreamReader>

namespace {

constexpr qsizetype largestDocument = 1024 * 1024;
constexpr int mostElements = 20'000;
constexpr int deepestNesting = 64;
constexpr int mostReferences = 16;

bool isText(QStringView element)
{
    return element == u"text" || element == u"tspan" || element == u"textArea" || element.startsWith(u"font");
}

} // namespace

bool isSVGWithinBounds(QByteArrayView bytes, SVGTexts texts)
{
    if (bytes.size() > largestDocument || !isXMLWithinBounds(bytes))
        return false;
    QXmlStreamReader reader(bytes.toByteArray());
    int elements = 0;
    int depth = 0;
    int references = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            references += reader.name() == u"use";
            if (++elements > mostElements || ++depth > deepestNesting || references > mostReferences)
                return false;
            if (reader.name() == u"image" || (texts == SVGTexts::Refused && isText(reader.name())))
                return false;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    return !reader.hasError();
}
