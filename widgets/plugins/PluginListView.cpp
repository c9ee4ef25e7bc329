#include "widgets/plugins/PluginListView.h"

#include "localization/Localizable.h"
#include "widgets/plugins/PluginListDelegate.h"
#include "widgets/plugins/PluginListModel.h"

#include <QAction>
#include <QSortFilterProxyModel>

PluginListView::PluginListView(PluginListModel &model, QWidget *parent)
    : QListView(parent)
    , m_plugins(model)
    , m_found(new QSortFilterProxyModel(this))
{
    m_found->setSourceModel(&model);
    m_found->setFilterRole(PluginListModel::SearchRole);
    m_found->setFilterCaseSensitivity(Qt::CaseInsensitive);
    setObjectName(QStringLiteral("PluginList"));
    setAccessibleName(Localizable::tr("Installed plug-ins"));
    setFrameShape(QFrame::NoFrame);
    setModel(m_found);
    setItemDelegate(new PluginListDelegate(this));
    setUniformItemSizes(true);
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumWidth(260);
    auto *const removal = new QAction(this);
    removal->setShortcut(QKeySequence::Delete);
    removal->setShortcutContext(Qt::WidgetShortcut);
    connect(removal, &QAction::triggered, this, &PluginListView::removalRequested);
    addAction(removal);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &PluginListView::selectionMoved);
    setCurrentIndex(m_found->index(0, 0));
}

PluginListView::~PluginListView()
{
    selectionModel()->disconnect(this); // whose rows go before it does
}

void PluginListView::search(const QString &text)
{
    m_found->setFilterFixedString(text);
}

bool PluginListView::hides(const QString &identifier) const
{
    const auto row = m_plugins.indexOf(identifier);
    return row.isValid() && !m_found->mapFromSource(row).isValid();
}

void PluginListView::select(const QString &identifier)
{
    const auto row = m_found->mapFromSource(m_plugins.indexOf(identifier));
    if (!row.isValid())
        return;
    setCurrentIndex(row);
    scrollTo(row);
}

std::shared_ptr<KRPluginBundle> PluginListView::selectedPlugin() const
{
    return m_plugins.plugin(m_found->mapToSource(currentIndex()));
}

QString PluginListView::selectedIdentifier() const
{
    return currentIndex().data(PluginListModel::IdentifierRole).toString();
}
