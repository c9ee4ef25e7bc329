#include "widgets/console/ConsoleTable.h"

#include "localization/Localizable.h"
#include "widgets/console/LogDelegate.h"
#include "widgets/console/LogFilter.h"
#include "widgets/console/LogModel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

bool hasPlace(const QModelIndex &index)
{
    return index.column() == LogModel::PlaceColumn && index.data(LogModel::LineRole).toInt() > 0;
}

} // namespace

ConsoleTable::ConsoleTable(LogModel &model, LogFilter &filter, QWidget *parent)
    : QTableView(parent)
    , m_filter(filter)
{
    setObjectName(QStringLiteral("ConsoleTable"));
    setAccessibleName(Localizable::tr("Log entries"));
    setModel(&filter);
    setItemDelegate(new LogDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setMouseTracking(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    constexpr int spacing = 8;
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + spacing);
    const int digit = fontMetrics().horizontalAdvance(u'0');
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setSectionResizeMode(LogModel::MessageColumn, QHeaderView::Stretch);
    setColumnWidth(LogModel::TimeColumn, 15 * digit);
    setColumnWidth(LogModel::PluginColumn, 18 * digit);
    setColumnWidth(LogModel::PlaceColumn, 18 * digit);

    connect(&model, &LogModel::batchBegins, this, [this] {
        m_isAtEnd = verticalScrollBar()->value() >= verticalScrollBar()->maximum();
        m_rowsGone = 0;
    });
    connect(&filter, &QAbstractItemModel::rowsRemoved, this,
        [this](const QModelIndex &, int first, int last) { m_rowsGone += first == 0 ? last + 1 : 0; });
    connect(&model, &LogModel::batchEnded, this, &ConsoleTable::keepPlace);
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        if (hasPlace(index))
            emit placeActivated(index);
    });
}

void ConsoleTable::keepPlace()
{
    auto *const bar = verticalScrollBar();
    if (m_isAtEnd)
        scrollToBottom();
    else if (m_rowsGone > 0)
        bar->setValue(bar->value() - m_rowsGone * verticalHeader()->defaultSectionSize());
}

QString ConsoleTable::textToCopy() const
{
    auto rows = selectionModel()->selectedRows(LogModel::MessageColumn);
    std::sort(rows.begin(), rows.end());
    QStringList texts;
    if (rows.isEmpty()) {
        for (int row = 0; row < m_filter.rowCount(); ++row)
            texts.append(m_filter.entry(row).text);
    }
    for (const auto &row : rows)
        texts.append(row.data(LogModel::TextRole).toString());
    return texts.join(u'\n');
}

void ConsoleTable::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto place = currentIndex().siblingAtColumn(LogModel::PlaceColumn);
    if (isEnter && hasPlace(place))
        emit placeActivated(place);
    else if (event->matches(QKeySequence::Copy))
        event->ignore(); // the window's, which copies whole entries
    else
        QTableView::keyPressEvent(event);
}

void ConsoleTable::mouseMoveEvent(QMouseEvent *event)
{
    if (hasPlace(indexAt(event->pos())))
        viewport()->setCursor(Qt::PointingHandCursor);
    else
        viewport()->unsetCursor();
    QTableView::mouseMoveEvent(event);
}
