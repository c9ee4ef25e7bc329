#pragma once

#include "platform/Export.h"
#include "platform/FileWrapper.h"
#include "platform/KRImageData.h"

#include <QImage>
#include <QString>

#include <optional>

/// A plug-in's icon: where it lies in the bundle, and its picture. A plain value.
class KORVAN_EXPORT KRPluginBundleIconInfo
{
public:
    /// `initWithPath:imageData:`. Nil bytes: the file could not be read.
    KRPluginBundleIconInfo(const QString &path, const std::optional<QByteArray> &imageData);

    /// `initWithImage:`. The path becomes "icon.png".
    explicit KRPluginBundleIconInfo(const QImage &image);

    /// Relative to Contents/Resources; may go through subfolders.
    const QString &path() const { return m_path; }
    void setPath(const QString &path) { m_path = path; }
    /// Nil when the file could not be read.
    const std::optional<KRImageData> &imageWrapper() const { return m_imageWrapper; }
    void setImageWrapper(const std::optional<KRImageData> &wrapper) { m_imageWrapper = wrapper; }
    /// Null without a wrapper, and when its bytes are no image.
    QImage image() const;
    /// The encoded picture as a file, in a folder for each folder of the path; empty components and "." are left out.
    /// Nil when there are no bytes, and without a path.
    std::optional<FileWrapper> fileWrapper() const;

private:
    QString m_path;
    std::optional<KRImageData> m_imageWrapper;
};
