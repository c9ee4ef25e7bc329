#include "widgets/plugins/CommandList.h"

#include "bundles/KRPluginBundle.h"
#include "commands/KRPluginCommand.h"
#include "localization/Localizable.h"
#include "platform/MenuShortcut.h"
#include "widgets/PluginText.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

/// A plug-in may list any number; nobody reads more.
constexpr int mostCommands = 500;
constexpr int mostVisibleRows = 9;

QTreeWidgetItem *itemFor(const KRPluginCommand &command, int height)
{
    auto *const item = new QTreeWidgetItem;
    item->setSizeHint(0, QSize(0, height));
    const auto name = plainLine(command.name().value_or(QString()));
    item->setText(0, name.isEmpty() ? plainLine(command.identifier().value_or(QString())) : name);
    item->setText(1, keySequenceOf(command.menuItemWithAction(nullptr)).toString(QKeySequence::NativeText));
    item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

} // namespace

CommandList::CommandList(QWidget *parent)
    : QWidget(parent)
    , m_tree(new QTreeWidget)
{
    m_tree->setObjectName(QStringLiteral("Commands"));
    m_tree->setAccessibleName(Localizable::tr("Commands"));
    m_tree->setHeaderLabels({Localizable::tr("Command"), Localizable::tr("Shortcut")});
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_tree->setRootIsDecorated(false);
    m_tree->setUniformRowHeights(true);
    m_tree->setTabKeyNavigation(false);
    m_tree->setSelectionMode(QAbstractItemView::NoSelection);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tree);
}

void CommandList::setPlugin(const KRPluginBundle *bundle)
{
    constexpr int spacing = 8;
    const int rowHeight = m_tree->fontMetrics().height() + spacing;
    m_tree->clear();
    if (bundle) {
        for (const auto &[identifier, command] : bundle->commands()) {
            if (m_tree->topLevelItemCount() == mostCommands)
                break;
            m_tree->addTopLevelItem(itemFor(*command, rowHeight));
        }
    }
    const int rows = m_tree->topLevelItemCount();
    setVisible(rows > 0);
    m_tree->setFixedHeight(m_tree->header()->sizeHint().height() + rowHeight * std::min(rows, mostVisibleRows)
        + 2 * m_tree->frameWidth() + 2);
}
