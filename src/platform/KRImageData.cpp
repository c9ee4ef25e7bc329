#include "platform/KRImageData.h"

#include "platform/ImageDecoding.h"

#include <QBuffer>
#include <QCryptographicHash>

KRImageData::KRImageData(const QByteArray &data, const std::optional<QByteArray> &sha)
    : m_data(data)
    , m_sha(sha)
{ }

KRImageData::KRImageData(const QImage &image)
    : m_image(image)
{ }

QByteArray KRImageData::data() const
{
    if (!m_data) {
        QByteArray encoded;
        QBuffer buffer(&encoded);
        if (!buffer.open(QIODevice::WriteOnly) || !m_image->save(&buffer, "PNG"))
            encoded.clear();
        m_data = encoded;
    }
    return *m_data;
}

QByteArray KRImageData::sha() const
{
    if (!m_sha)
        m_sha = QCryptographicHash::hash(data(), QCryptographicHash::Sha1);
    return *m_sha;
}

QImage KRImageData::image() const
{
    if (!m_image)
        m_image = decodedImage(*m_data);
    return *m_image;
}
