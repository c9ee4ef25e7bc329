#pragma once

#include <QCache>
#include <QImage>
#include <QString>

/// The pictures of image layers by their URLs, read once: files of this computer and data URLs. Anything else, and what
/// is too large, has no picture. Main thread only.
class ImageStore
{
public:
    static ImageStore &shared();

    /// Null when there is no such picture. A file is read again when it has changed.
    QImage image(const QString &url);

private:
    ImageStore();

    QCache<QString, QImage> m_images;
};
