#include "MenuReport.h"

#include "TextTable.h"
#include "commands/KRPluginCommandSpecifier.h"
#include "platform/Menu.h"
#include "platform/MenuShortcut.h"

namespace {

QString commandOf(const MenuItem &item)
{
    return item.representedObject.value<KRPluginCommandSpecifier>().stringValue().value_or(QString());
}

OrderedVariantDictionary describeItem(const MenuItem &item)
{
    const auto type = QStringLiteral("type");
    const auto title = QStringLiteral("title");
    if (item.isSeparator)
        return {{type, QStringLiteral("separator")}};
    if (item.submenu) {
        return {{type, QStringLiteral("menu")}, {title, item.title},
            {QStringLiteral("items"), describeMenu(*item.submenu)}};
    }
    return {
        {type, QStringLiteral("item")},
        {title, item.title},
        {QStringLiteral("command"), commandOf(item)},
        {QStringLiteral("key"), item.keyEquivalent},
        {QStringLiteral("modifiers"), item.keyEquivalentModifierMask},
    };
}

void addRows(TextTable &table, const Menu &menu, const QString &indentation)
{
    for (const auto &item : menu.items()) {
        table.addRow({indentation + (item.isSeparator ? QStringLiteral("────") : item.title),
            keySequenceOf(item).toString(), commandOf(item)});
        if (item.submenu)
            addRows(table, *item.submenu, indentation + QStringLiteral("    "));
    }
}

} // namespace

QVariantList describeMenu(const Menu &menu)
{
    QVariantList items;
    for (const auto &item : menu.items())
        items.append(QVariant::fromValue(describeItem(item)));
    return items;
}

void printMenu(const Menu &menu, Output &output)
{
    if (menu.isEmpty())
        return output.line(QStringLiteral("The menu is empty."));
    TextTable table({QStringLiteral("MENU"), QStringLiteral("SHORTCUT"), QStringLiteral("COMMAND")});
    addRows(table, menu, {});
    table.print(output);
}
