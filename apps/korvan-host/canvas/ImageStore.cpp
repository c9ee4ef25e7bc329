#include "canvas/ImageStore.h"

#include "platform/FileReading.h"
#include "platform/KRImageData.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {

constexpr qsizetype largestStore = 128 * 1024; // in units of 1,024 bytes
constexpr qint64 largestFile = 64 * 1024 * 1024;
/// In pixels a side: what is larger is shown smaller.
constexpr int largestSide = 2048;

QByteArray dataOf(const QUrl &url)
{
    if (url.isLocalFile()) {
        const auto content = readFile(QFile::encodeName(url.toLocalFile()), largestFile);
        return content ? content.value() : QByteArray();
    }
    if (url.scheme() != u"data")
        return {};
    const auto content = url.path(QUrl::FullyEncoded).toUtf8();
    const auto comma = content.indexOf(',');
    const auto data = QByteArray::fromPercentEncoding(content.mid(comma + 1));
    return content.left(comma).endsWith(";base64") ? QByteArray::fromBase64(data) : data;
}

QImage read(const QString &text)
{
    auto image = KRImageData(dataOf(QUrl(text))).image();
    image.setDevicePixelRatio(1);
    if (image.width() > largestSide || image.height() > largestSide)
        image = image.scaled(largestSide, largestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QString keyOf(const QString &text)
{
    if (text.startsWith(u"data:"))
        return text;
    const QFileInfo file(QUrl(text).toLocalFile());
    return text + u'\n' + QString::number(file.lastModified().toMSecsSinceEpoch());
}

} // namespace

ImageStore &ImageStore::shared()
{
    static ImageStore store;
    return store;
}

ImageStore::ImageStore()
    : m_images(largestStore)
{ }

QImage ImageStore::image(const QString &url)
{
    if (url.isEmpty())
        return {};
    const auto key = keyOf(url);
    if (const auto *const known = m_images.object(key))
        return *known;
    const auto image = read(url);
    m_images.insert(key, new QImage(image), 1 + image.sizeInBytes() / 1024);
    return image;
}
