#include "validation/ManifestRules.h"

#include "bundles/BundleLimits.h"
#include "platform/FileReading.h"
#include "platform/ImageDecoding.h"
#include "validation/BundlePath.h"

#include <QFile>

namespace {

/// "" for a picture.
QString flawOf(const QString &path)
{
    const auto bytes = readFile(QFile::encodeName(path), largestIcon);
    if (!bytes)
        return QStringLiteral("cannot be read: %1.").arg(bytes.error().localizedDescription);
    return isImage(bytes.value()) ? QString()
                                  : QStringLiteral("is no image that hosts show: it may be damaged, or too large.");
}

} // namespace

void checkIcon(Manifest &manifest)
{
    const auto key = QStringLiteral("icon");
    const auto *const icon = manifest.root().value(key, JSONNode::Type::String);
    if (!icon || icon->text.isEmpty())
        return;
    const auto file = QStringLiteral("Contents/Resources/") + icon->text;
    if (!isFileInBundle(manifest.bundle(), file))
        return manifest.error(key, icon->offset, QStringLiteral("There is no file “%1”.").arg(file));
    const auto flaw = flawOf(manifest.bundle() + u'/' + file);
    if (!flaw.isEmpty())
        manifest.error(key, icon->offset, QStringLiteral("The file “%1” %2").arg(file, flaw));
    else if (leadsOut(manifest.bundle(), file))
        manifest.warning(key, icon->offset, QStringLiteral("“%1” is not in the bundle.").arg(icon->text));
}
