#include "GridView.h"

#include "ProgrammingGridModel.h"

#include <QHeaderView>
#include <QTableView>

int TwipsToPixels(int twips, int logicalDpiX)
{
    return int(qint64(twips) * logicalDpiX / 1440);
}

void ApplyColumnWidths(QTableView *view)
{
    const auto *model = qobject_cast<const ProgrammingGridModel *>(view->model());
    if (!model)
        return;
    const ProgrammingGrid &grid = model->grid();
    const int dpi = view->logicalDpiX();
    for (int c = 0; c < grid.cols(); ++c) {
        const int width = grid.columnWidth(c);
        view->setColumnHidden(c, width <= 0);
        if (width > 0)
            view->setColumnWidth(c, TwipsToPixels(width, dpi));
    }
}

void FitColumnsToHeaders(QTableView *view)
{
    const QHeaderView *header = view->horizontalHeader();
    for (int c = 0; c < header->count(); ++c) {
        if (header->isSectionHidden(c))
            continue;
        const int whole = header->sectionSizeHint(c);
        if (view->columnWidth(c) < whole)
            view->setColumnWidth(c, whole);
    }
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
    view->setWordWrap(false);
    // Widths again whenever the columns may have changed.
    QObject::connect(model, &QAbstractItemModel::modelReset, view, [view] { ApplyColumnWidths(view); });
    ApplyColumnWidths(view);
    return view;
}
