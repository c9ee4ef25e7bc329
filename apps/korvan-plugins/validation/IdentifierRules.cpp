#include "validation/ManifestRules.h"

#include "platform/ControlCharacters.h"

#include <algorithm>

namespace {

/// Hosts download a plug-in's versions into folders that its identifier names.
bool namesAFolder(const QString &identifier)
{
    const auto components = identifier.split(u'/');
    return !components.contains(QStringLiteral("..")) && !identifier.contains(QChar())
        && std::any_of(components.begin(), components.end(),
            [](const QString &component) { return !component.isEmpty() && component != u"."; });
}

} // namespace

void checkIdentifier(Manifest &manifest)
{
    const auto key = QStringLiteral("identifier");
    const auto *const identifier = manifest.root().value(key, JSONNode::Type::String);
    if (!identifier || identifier->text.isEmpty())
        return;
    const auto warn = [&](const QString &flaw) {
        manifest.warning(key, identifier->offset, QStringLiteral("“%1” %2.").arg(identifier->text, flaw));
    };
    if (!namesAFolder(identifier->text))
        warn(QStringLiteral("names no folder, so that hosts do not download updates"));
    else if (hasControlCharacter(identifier->text))
        warn(QStringLiteral("has control characters"));
}
