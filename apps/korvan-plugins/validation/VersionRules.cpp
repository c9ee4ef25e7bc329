#include "validation/ManifestRules.h"

#include "platform/LTCompareVersions.h"

#include <QLocale>

void checkVersions(Manifest &manifest)
{
    const auto &root = manifest.root();
    if (const auto *const number = root.value(u"version", JSONNode::Type::Number)) {
        const auto text = QString::number(number->text.toDouble(), 'f', QLocale::FloatingPointShortest);
        if (text != number->text) {
            manifest.warning(QStringLiteral("version"), number->offset,
                QStringLiteral("The number %1 is read as version %2. Write it as a string.").arg(number->text, text));
        }
    }
    const auto lowest = root.string(u"compatibleVersion");
    const auto *const highest = root.value(u"maxCompatibleVersion", JSONNode::Type::String);
    if (lowest && highest && LTCompareVersions(lowest, highest->text) > 0) {
        manifest.error(QStringLiteral("maxCompatibleVersion"), highest->offset,
            QStringLiteral("“%1” is lower than the compatibleVersion “%2”.").arg(highest->text, *lowest));
    }
}
