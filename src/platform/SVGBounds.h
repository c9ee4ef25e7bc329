#pragma once

#include <QByteArrayView>

/// Where an SVG's texts are drawn: fonts need a QGuiApplication.
enum class SVGTexts { Allowed, Refused };

/// Whether an SVG of unknown origin can be drawn in little time and memory, and with nothing but itself. Out of bounds
/// are documents larger than a megabyte, with more than 20,000 elements, nested deeper than 64, in other encodings than
/// UTF-8, with declarations of their own, with pictures inside (which may be any file, or a pipe that never ends) and
/// with more than 16 references to elements (which may hold references, and so on). Reentrant.
bool isSVGWithinBounds(QByteArrayView bytes, SVGTexts texts);
