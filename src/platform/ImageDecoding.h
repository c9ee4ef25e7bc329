#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QImage>

/// More pixels than any picture of a plug-in sensibly has: 64 MB of memory.
inline constexpr qint64 mostImagePixels = 4096 * 4096;

/// The picture of encoded bytes of unknown origin, in any format that Qt's plugins read; turned as its camera was. A
/// null image when the bytes are none, and for one of more than `mostImagePixels`, which is not decoded at all. An SVG
/// smaller than 256 points is drawn that large, its device pixel ratio saying so; one that is out of bounds
/// (SVGBounds.h), packed, or has texts where there is no QGuiApplication is a null image.
QImage decodedImage(const QByteArray &bytes);

/// Whether a program with a QGuiApplication decodes a picture from the bytes, whether or not this one has it. Where it
/// does not, an SVG with texts is taken for one when it is within bounds.
KORVAN_EXPORT bool isImage(const QByteArray &bytes);
