#include "bundles/KRPluginBundleIconInfo.h"

KRPluginBundleIconInfo::KRPluginBundleIconInfo(const QString &path, const std::optional<QByteArray> &imageData)
    : m_path(path)
{
    if (imageData)
        m_imageWrapper.emplace(*imageData);
}

KRPluginBundleIconInfo::KRPluginBundleIconInfo(const QImage &image)
    : m_path(QStringLiteral("icon.png"))
    , m_imageWrapper(std::in_place, image)
{ }

QImage KRPluginBundleIconInfo::image() const
{
    return m_imageWrapper ? m_imageWrapper->image() : QImage();
}

std::optional<FileWrapper> KRPluginBundleIconInfo::fileWrapper() const
{
    // As reading a path passes over them.
    auto components = m_path.split(u'/', Qt::SkipEmptyParts);
    components.removeAll(QStringLiteral("."));
    const auto bytes = m_imageWrapper ? m_imageWrapper->data() : QByteArray();
    if (components.isEmpty() || bytes.isEmpty())
        return std::nullopt;
    auto wrapper = FileWrapper::regularFile(components.takeLast(), bytes);
    while (!components.isEmpty()) {
        auto folder = FileWrapper::folder(components.takeLast());
        folder.addFileWrapper(std::move(wrapper));
        wrapper = std::move(folder);
    }
    return wrapper;
}
