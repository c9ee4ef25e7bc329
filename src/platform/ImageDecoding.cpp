#include "platform/ImageDecoding.h"

#include "platform/SVGBounds.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>

#include <algorithm>
#include <cmath>

namespace {

/// Vector pictures are drawn so large at least, so that they stay sharp in dialogs on dense screens.
constexpr int vectorSide = 256;

bool isWithinBounds(const QSize &size)
{
    return !size.isEmpty() && qint64(size.width()) * size.height() <= mostImagePixels;
}

SVGTexts textsAsTheProgramAllows()
{
    // Looking for a font ends the program where there is no such application.
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? SVGTexts::Allowed : SVGTexts::Refused;
}

QImage readVectors(QImageReader &reader)
{
    const auto size = reader.size();
    const auto factor = std::max(1, int(std::ceil(double(vectorSide) / std::max(size.width(), size.height()))));
    reader.setScaledSize(size * factor);
    auto image = reader.read();
    image.setDevicePixelRatio(factor);
    return image;
}

} // namespace

QImage decodedImage(const QByteArray &bytes)
{
    auto content = bytes;
    QBuffer buffer(&content);
    if (!buffer.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&buffer);
    const auto format = reader.format();
    const bool isVectors = format == "svg";
    // What is packed may be of any size when it is not.
    if (format == "svgz" || (isVectors && !isSVGWithinBounds(bytes, textsAsTheProgramAllows())))
        return {};
    if (!isWithinBounds(reader.size())) // a format that does not tell its size before is out of bounds too
        return {};
    reader.setAutoTransform(true);
    return isVectors ? readVectors(reader) : reader.read();
}

bool isImage(const QByteArray &bytes)
{
    const bool hasOnlyTextsAgainstIt = textsAsTheProgramAllows() == SVGTexts::Refused
        && isSVGWithinBounds(bytes, SVGTexts::Allowed) && !isSVGWithinBounds(bytes, SVGTexts::Refused);
    return hasOnlyTextsAgainstIt || !decodedImage(bytes).isNull();
}
