// SPDX-License-Identifier: GPL-3.0-or-later
#include "GridView.h"

#include "ProgrammingGridModel.h"

#include <QAbstractItemDelegate>
#include <QHeaderView>
#include <QStyleOptionViewItem>
#include <QTableView>

int TwipsToPixels(int twips, int logicalDpiX)
{
    return int(qint64(twips) * logicalDpiX / 1440);
}

namespace {

// The room the widest of the given rows' cells takes in column c. The text
// widths pick the widest cell cheaply; the delegate then sizes that one cell
// with the style's margins, as it will be drawn.
int widestCell(const QTableView *view, int c, int firstRow, int lastRow)
{
    const QAbstractItemModel *model = view->model();
    const QFontMetrics metrics = view->fontMetrics();
    int widestText = -1;
    int widestRow = -1;
    for (int r = firstRow; r <= lastRow; ++r) {
        const int w = metrics.horizontalAdvance(model->data(model->index(r, c)).toString());
        if (w > widestText) {
            widestText = w;
            widestRow = r;
        }
    }
    if (widestRow < 0)
        return 0;
    QStyleOptionViewItem option;
    option.initFrom(view);
    option.font = view->font();
    const int grid = view->showGrid() ? 1 : 0;
    return view->itemDelegate()->sizeHint(option, model->index(widestRow, c)).width() + grid;
}

// Widens the shown columns from firstColumn to lastColumn to the given
// rows' cells; a column wide enough keeps its width.
void widenToCells(QTableView *view, int firstColumn, int lastColumn, int firstRow, int lastRow)
{
    const QHeaderView *header = view->horizontalHeader();
    for (int c = firstColumn; c <= lastColumn; ++c) {
        if (header->isSectionHidden(c))
            continue;
        const int need = widestCell(view, c, firstRow, lastRow);
        if (view->columnWidth(c) < need)
            view->setColumnWidth(c, need);
    }
}

} // namespace

void ApplyColumnWidths(QTableView *view)
{
    const auto *model = qobject_cast<const ProgrammingGridModel *>(view->model());
    if (!model)
        return;
    const ProgrammingGrid &grid = model->grid();
    const QHeaderView *header = view->horizontalHeader();
    const int dpi = view->logicalDpiX();
    for (int c = 0; c < grid.cols(); ++c) {
        const int width = grid.columnWidth(c);
        view->setColumnHidden(c, width <= 0);
        if (width > 0)
            view->setColumnWidth(c, qMax(TwipsToPixels(width, dpi), header->sectionSizeHint(c)));
    }
    widenToCells(view, 0, grid.cols() - 1, 0, model->rowCount() - 1);
}

QTableView *MakeGridView(const char *objectName, ProgrammingGridModel *model, QWidget *parent)
{
    auto *view = new QTableView(parent);
    view->setObjectName(QLatin1String(objectName));
    view->setModel(model);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->verticalHeader()->setVisible(false);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 4);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setStretchLastSection(true);
    view->setWordWrap(false);
    // Widths again whenever the columns may have changed; a cell written or
    // a row added later only widens its columns.
    QObject::connect(model, &QAbstractItemModel::modelReset, view, [view] { ApplyColumnWidths(view); });
    QObject::connect(model, &QAbstractItemModel::dataChanged, view,
                     [view](const QModelIndex &from, const QModelIndex &to) {
                         widenToCells(view, from.column(), to.column(), from.row(), to.row());
                     });
    QObject::connect(model, &QAbstractItemModel::rowsInserted, view,
                     [view](const QModelIndex &, int first, int last) {
                         widenToCells(view, 0, view->model()->columnCount() - 1, first, last);
                     });
    QObject::connect(model, &QAbstractItemModel::headerDataChanged, view,
                     [view](Qt::Orientation o, int first, int last) {
                         if (o != Qt::Horizontal)
                             return;
                         const QHeaderView *header = view->horizontalHeader();
                         for (int c = first; c <= last && c < header->count(); ++c)
                             if (!header->isSectionHidden(c) && view->columnWidth(c) < header->sectionSizeHint(c))
                                 view->setColumnWidth(c, header->sectionSizeHint(c));
                     });
    ApplyColumnWidths(view);
    return view;
}
