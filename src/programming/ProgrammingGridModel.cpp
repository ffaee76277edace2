// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgrammingGridModel.h"

ProgrammingGridModel::ProgrammingGridModel(QObject *parent) : QAbstractTableModel(parent) {}

void ProgrammingGridModel::beginFill()
{
    if (m_fillDepth++ == 0)
        beginResetModel();
}

void ProgrammingGridModel::endFill()
{
    if (m_fillDepth > 0 && --m_fillDepth == 0) {
        endResetModel();
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, qMax(0, m_grid.cols() - 1));
    }
}

ProgrammingGrid &ProgrammingGridModel::gridForFill()
{
    Q_ASSERT(m_fillDepth > 0);
    return m_grid;
}

void ProgrammingGridModel::setText(int gridRow, int col, const QString &text)
{
    if (m_fillDepth > 0 || gridRow == 0) {
        m_grid.setText(gridRow, col, text);
        if (gridRow == 0 && m_fillDepth == 0)
            Q_EMIT headerDataChanged(Qt::Horizontal, col, col);
        return;
    }
    m_grid.setText(gridRow, col, text);
    const QModelIndex i = index(toViewRow(gridRow), col);
    if (i.isValid())
        Q_EMIT dataChanged(i, i);
}

void ProgrammingGridModel::setRow(int gridRow, const QStringList &cells)
{
    m_grid.setRow(gridRow, cells);
    if (m_fillDepth > 0 || gridRow <= 0 || gridRow >= m_grid.rows() || m_grid.cols() == 0)
        return;
    Q_EMIT dataChanged(index(toViewRow(gridRow), 0), index(toViewRow(gridRow), m_grid.cols() - 1));
}

int ProgrammingGridModel::addRow()
{
    if (m_fillDepth > 0)
        return m_grid.addRow();
    const int viewRow = rowCount();
    beginInsertRows(QModelIndex(), viewRow, viewRow);
    const int gridRow = m_grid.addRow();
    endInsertRows();
    return gridRow;
}

int ProgrammingGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_grid.rows() - 1;
}

int ProgrammingGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_grid.cols();
}

QVariant ProgrammingGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole) {
        // The printer pads its texts with blanks; the trailing ones would only
        // push the text to an ellipsis, so they are left out of what is shown
        // (the grid, the file and the printer keep them). Leading blanks stay:
        // they show where a centred line stands.
        QString text = m_grid.text(toGridRow(index.row()), index.column());
        qsizetype end = text.size();
        while (end > 0 && text.at(end - 1) == QLatin1Char(' '))
            --end;
        text.truncate(end);
        return text;
    }
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(m_grid.columnAlignment(index.column()));
    return {};
}

QVariant ProgrammingGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return m_grid.header(section);
    if (orientation == Qt::Vertical && role == Qt::DisplayRole)
        return QString();
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags ProgrammingGridModel::flags(const QModelIndex &index) const
{
    // The grids are shown, never typed into.
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}
