#include "panels/LayersPanel.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>

namespace {

/// As few ranges as there are: a selection takes the square of their number.
void selectRows(const QAbstractItemModel &model, const QModelIndex &parent, QList<int> &rows, QItemSelection &selection)
{
    std::sort(rows.begin(), rows.end());
    for (qsizetype first = 0; first < rows.size();) {
        auto last = first;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.select(model.index(rows[first], 0, parent), model.index(rows[last], 0, parent));
        first = last + 1;
    }
}

} // namespace

LayersPanel::LayersPanel(std::shared_ptr<Document> document, QWidget *parent)
    : QTreeView(parent)
    , m_document(document)
    , m_model(std::move(document))
{
    setModel(&m_model);
    setHeaderHidden(true);
    setFrameShape(QFrame::NoFrame);
    setUniformRowHeights(true);
    setIndentation(16);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setDropIndicatorShown(true);
    setAutoExpandDelay(600);
    setAccessibleName(tr("Layers"));
    setAccessibleDescription(tr("All layers of the document, topmost first."));

    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &LayersPanel::takeSelectionOver);
    m_observer = m_document->observe([this](const DocumentEvent &event) {
        if (event.kind == DocumentEvent::Kind::SelectionChanged && !m_isTakingOver)
            showSelectionLater();
    });
    showSelection();
}

LayersPanel::~LayersPanel() = default;

void LayersPanel::takeSelectionOver()
{
    if (m_isShowing)
        return;
    const QScopedValueRollback guard(m_isTakingOver, true);
    QList<LayerPointer> layers;
    const auto rows = selectionModel()->selectedRows();
    for (const auto &row : rows)
        layers.append(m_model.layerAt(row));
    m_document->setSelection(layers);
}

/// Once for all changes of one turn of the event loop.
void LayersPanel::showSelectionLater()
{
    if (m_isShowPlanned)
        return;
    m_isShowPlanned = true;
    QTimer::singleShot(0, this, &LayersPanel::showSelection);
}

void LayersPanel::showSelection()
{
    m_isShowPlanned = false;
    const QScopedValueRollback guard(m_isShowing, true);
    QHash<QModelIndex, QList<int>> rows;
    QModelIndex latest;
    const auto layers = m_document->selection();
    for (const auto &layer : layers) {
        latest = m_model.indexOf(layer);
        rows[latest.parent()].append(latest.row());
    }
    QItemSelection selection;
    for (auto entry = rows.begin(); entry != rows.end(); ++entry)
        selectRows(m_model, entry.key(), *entry, selection);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!latest.isValid())
        return;
    selectionModel()->setCurrentIndex(latest, QItemSelectionModel::NoUpdate);
    scrollTo(latest);
}
