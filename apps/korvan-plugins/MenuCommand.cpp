#include "Commands.h"

#include "PluginSession.h"
#include "TextTable.h"
#include "platform/Menu.h"
#include "platform/MenuShortcut.h"

namespace {

QString commandOf(const MenuItem &item)
{
    return item.representedObject.value<KRPluginCommandSpecifier>().stringValue().value_or(QString());
}

QVariantList describeItems(const Menu &menu);

OrderedVariantDictionary describeItem(const MenuItem &item)
{
    const auto type = QStringLiteral("type");
    const auto title = QStringLiteral("title");
    if (item.isSeparator)
        return {{type, QStringLiteral("separator")}};
    if (item.submenu) {
        return {{type, QStringLiteral("menu")}, {title, item.title},
            {QStringLiteral("items"), describeItems(*item.submenu)}};
    }
    return {
        {type, QStringLiteral("item")},
        {title, item.title},
        {QStringLiteral("command"), commandOf(item)},
        {QStringLiteral("key"), item.keyEquivalent},
        {QStringLiteral("modifiers"), item.keyEquivalentModifierMask},
    };
}

/// Nests as deep as manifests may.
QVariantList describeItems(const Menu &menu)
{
    QVariantList items;
    for (const auto &item : menu.items())
        items.append(QVariant::fromValue(describeItem(item)));
    return items;
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

void printForPeople(const Menu &menu, Output &output)
{
    if (menu.isEmpty())
        return output.line(QStringLiteral("The menu is empty."));
    TextTable table({QStringLiteral("MENU"), QStringLiteral("SHORTCUT"), QStringLiteral("COMMAND")});
    addRows(table, menu, {});
    table.print(output);
}

} // namespace

ExitCode showMenu(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    Menu menu;
    session.manager().addPluginsToMenu(menu, nullptr);
    if (output.isJSON())
        output.document({{QStringLiteral("items"), describeItems(menu)}});
    else
        printForPeople(menu, output);
    return ExitCode::Done;
}
