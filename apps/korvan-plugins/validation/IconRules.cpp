#include "validation/ManifestRules.h"

#include "validation/BundlePath.h"

#include <QFileInfo>

void checkIcon(Manifest &manifest)
{
    const auto key = QStringLiteral("icon");
    const auto *const icon = manifest.root().value(key, JSONNode::Type::String);
    if (!icon || icon->text.isEmpty())
        return;
    const QFileInfo file(manifest.resourcesFolder() + u'/' + icon->text);
    if (!file.isFile())
        manifest.error(key, icon->offset, QStringLiteral("There is no file “Contents/Resources/%1”.").arg(icon->text));
    else if (!file.isReadable())
        manifest.error(
            key, icon->offset, QStringLiteral("The file “Contents/Resources/%1” cannot be read.").arg(icon->text));
    else if (leadsOut(QStringLiteral("Contents/Resources/") + icon->text))
        manifest.warning(key, icon->offset, QStringLiteral("“%1” is not in the bundle.").arg(icon->text));
}
