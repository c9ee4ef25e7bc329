#include "bundles/KRPluginBundleIconInfo.h"

KRPluginBundleIconInfo::KRPluginBundleIconInfo(const QString &path, const std::optional<QByteArray> &imageData)
    : m_path(path)
{
    if (imageData)
        m_imageWrapper.emplace(*imageData);
}

QImage KRPluginBundleIconInfo::image() const
{
    return m_imageWrapper ? m_imageWrapper->image() : QImage();
}
