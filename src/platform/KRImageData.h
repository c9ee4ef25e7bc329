#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QImage>

#include <optional>

/// An image as its encoded bytes, its pixels, or both: one is made from the other when it is first asked for. A plain
/// value; not to be asked from two threads at once.
class KORVAN_EXPORT KRImageData
{
public:
    /// From encoded bytes (PNG and whatever else the platform decodes) and their SHA-1 digest; without a digest it is
    /// computed when asked for.
    explicit KRImageData(const QByteArray &data, const std::optional<QByteArray> &sha = std::nullopt);
    /// From pixels.
    explicit KRImageData(const QImage &image);

    /// The encoded bytes; PNG when made from pixels.
    QByteArray data() const;
    /// The digest of data(): 20 bytes.
    QByteArray sha() const;
    /// The pixels; a null image when the bytes are no image, or one of more than 16 million pixels. Of an SVG that is
    /// small they are more than its points, as the image's device pixel ratio says.
    QImage image() const;

private:
    mutable std::optional<QByteArray> m_data;
    mutable std::optional<QByteArray> m_sha;
    mutable std::optional<QImage> m_image;
};
