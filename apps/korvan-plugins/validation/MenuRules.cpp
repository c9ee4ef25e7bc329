#include "validation/ManifestRules.h"

#include "validation/Suggestion.h"

#include <QHash>

namespace {

class MenuWalk
{
public:
    MenuWalk(Manifest &manifest, const QList<CommandFacts> &commands)
        : m_manifest(manifest)
    {
        for (const auto &command : commands) // of equal ones the last is the command
            m_hasRunHandler.insert(command.identifier, command.hasRunHandler);
    }

    void check(const QString &key, const JSONNode &menu)
    {
        const auto *const items = menu.value(u"items", JSONNode::Type::Array);
        if (!items)
            return;
        const auto itemsKey = Manifest::keyOfMember(key, QStringLiteral("items"));
        qsizetype index = 0;
        for (const auto &item : items->elements) {
            const auto itemKey = Manifest::keyOfElement(itemsKey, index++);
            if (item.isObject())
                check(itemKey, item);
            else if (item.isString() && item.text != u"-")
                checkCommand(itemKey, item);
        }
    }

private:
    void checkCommand(const QString &key, const JSONNode &item)
    {
        const auto found = m_hasRunHandler.constFind(item.text);
        if (found == m_hasRunHandler.constEnd()) {
            m_manifest.error(
                key, item.offset, QStringLiteral("There is no command “%1”.%2").arg(item.text, guess(item.text)));
        } else if (!*found) {
            m_manifest.warning(key, item.offset, QStringLiteral("The command “%1” has no run handler.").arg(item.text));
        }
    }

    QString guess(const QString &identifier) const
    {
        if (m_manifest.isFullOfMistakes())
            return {};
        auto known = m_hasRunHandler.keys();
        known.sort();
        return suggestion(identifier, known);
    }

    Manifest &m_manifest;
    QHash<QString, bool> m_hasRunHandler;
};

} // namespace

void checkMenu(Manifest &manifest, const QList<CommandFacts> &commands)
{
    if (const auto *const menu = manifest.root().value(u"menu", JSONNode::Type::Object))
        MenuWalk(manifest, commands).check(QStringLiteral("menu"), *menu);
}
