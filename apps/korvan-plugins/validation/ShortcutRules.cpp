#include "validation/ManifestRules.h"

#include "commands/KRPluginCommandKeys.h"

#include <QHash>

namespace {

/// A shortcut as hosts read it: the modifiers that its text contains, and its last character.
struct Shortcut
{
    QString key;
    QStringList modifiers;
    /// What is neither.
    QString rest;

    /// The same for all that mean the same.
    QString text() const { return (modifiers + QStringList(key)).join(u' '); }
};

Shortcut readShortcut(const QString &text)
{
    struct Modifier
    {
        QString name;
        QStringList spellings;
    };
    // Longer spellings first, so that nothing of them is left over.
    static const Modifier modifiers[] = {
        {QStringLiteral("cmd"), {QStringLiteral("command"), QStringLiteral("cmd")}},
        {QStringLiteral("alt"), {QStringLiteral("option"), QStringLiteral("alt")}},
        {QStringLiteral("ctrl"), {QStringLiteral("control"), QStringLiteral("ctrl")}},
        {QStringLiteral("shift"), {QStringLiteral("shift")}},
    };
    const auto lower = text.toLower();
    const bool endsWithPair = lower.size() > 1 && lower.back().isLowSurrogate();
    Shortcut shortcut;
    shortcut.key = lower.right(endsWithPair ? 2 : 1);
    shortcut.rest = lower.chopped(shortcut.key.size());
    for (const auto &modifier : modifiers) {
        bool isNamed = false;
        for (const auto &spelling : modifier.spellings) {
            isNamed |= lower.contains(spelling);
            shortcut.rest.remove(spelling);
        }
        if (isNamed)
            shortcut.modifiers.append(modifier.name);
    }
    shortcut.rest.remove(u' ').remove(u'+').remove(u'-');
    return shortcut;
}

} // namespace

void checkShortcuts(Manifest &manifest, const QList<CommandFacts> &commands)
{
    QHash<QString, QString> seen;
    for (const auto &command : commands) {
        const auto *const value = command.node->value(KRPluginCommandShortcutKey, JSONNode::Type::String);
        if (!value || value->text.isEmpty())
            continue;
        const auto key = Manifest::keyOfMember(command.key, KRPluginCommandShortcutKey);
        const auto shortcut = readShortcut(value->text);
        if (!shortcut.rest.isEmpty()) {
            manifest.warning(key, value->offset,
                QStringLiteral("“%1” is the shortcut “%2”: its key is the last character, and “%3” means nothing.")
                    .arg(value->text, shortcut.text(), shortcut.rest));
        }
        if (!command.hasRunHandler) {
            manifest.warning(
                key, value->offset, QStringLiteral("The command has no run handler that a shortcut could run."));
        } else if (const auto first = seen.constFind(shortcut.text()); first != seen.constEnd()) {
            manifest.error(key, value->offset,
                QStringLiteral("The shortcut “%1” is also that of %2.").arg(shortcut.text(), *first));
        } else {
            seen.insert(shortcut.text(), command.key);
        }
    }
}
