// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ProgrammingGrid.h"

#include <QAbstractTableModel>

// A ProgrammingGrid for the screen: grid row 0 gives the column headers,
// grid rows 1.. are the view's rows 0... Bulk fills go between beginFill and
// endFill (or through fill), so that a table of 999 rows costs one redraw.
class ProgrammingGridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit ProgrammingGridModel(QObject *parent = nullptr);

    const ProgrammingGrid &grid() const { return m_grid; }

    // Any change to the grid between these two is shown at endFill. They nest.
    void beginFill();
    void endFill();
    ProgrammingGrid &gridForFill(); // only between beginFill and endFill
    // beginFill, change, endFill in one.
    template <typename F>
    void fill(F change)
    {
        beginFill();
        change(m_grid);
        endFill();
    }

    // Single changes, shown at once.
    void setText(int gridRow, int col, const QString &text);
    void setRow(int gridRow, const QStringList &cells);
    int addRow(); // a blank grid row at the end; its grid index

    // Between grid rows and the view's rows.
    static int toGridRow(int viewRow) { return viewRow + 1; }
    static int toViewRow(int gridRow) { return gridRow - 1; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    ProgrammingGrid m_grid;
    int m_fillDepth = 0;
};
