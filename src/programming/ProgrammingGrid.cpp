// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgrammingGrid.h"

#include "settings/Conversions.h"

ProgrammingGrid::ProgrammingGrid(int columns)
{
    setCols(columns);
    setRows(1);
}

void ProgrammingGrid::setRows(int rows)
{
    rows = qMax(1, rows);
    if (rows < m_cells.size()) {
        m_cells.resize(rows);
        return;
    }
    m_cells.reserve(rows);
    while (m_cells.size() < rows)
        m_cells.append(QStringList(m_cols, QString()));
}

void ProgrammingGrid::setCols(int cols)
{
    cols = qMax(0, cols);
    m_cols = cols;
    m_columns.resize(cols);
    for (QStringList &r : m_cells)
        r.resize(cols);
}

int ProgrammingGrid::addRow()
{
    m_cells.append(QStringList(m_cols, QString()));
    return int(m_cells.size()) - 1;
}

QString ProgrammingGrid::text(int row, int col) const
{
    if (row < 0 || row >= m_cells.size() || col < 0 || col >= m_cols)
        return {};
    return m_cells[row][col];
}

void ProgrammingGrid::setText(int row, int col, const QString &text)
{
    if (row < 0 || row >= m_cells.size() || col < 0 || col >= m_cols)
        return;
    m_cells[row][col] = text;
}

QStringList ProgrammingGrid::row(int row) const
{
    if (row < 0 || row >= m_cells.size())
        return QStringList(m_cols, QString());
    return m_cells[row];
}

void ProgrammingGrid::setRow(int row, const QStringList &cells)
{
    if (row < 0 || row >= m_cells.size())
        return;
    for (int c = 0; c < m_cols; ++c)
        m_cells[row][c] = c < cells.size() ? cells[c] : QString();
}

bool ProgrammingGrid::isNumeric(int row, int col) const
{
    return Conv::IsNumeric(text(row, col));
}

bool ProgrammingGrid::isBlank(int row, int col) const
{
    return text(row, col).trimmed().isEmpty();
}

int ProgrammingGrid::columnWidth(int col) const
{
    return col >= 0 && col < m_cols ? m_columns[col].width : 0;
}

void ProgrammingGrid::setColumnWidth(int col, int twips)
{
    if (col >= 0 && col < m_cols)
        m_columns[col].width = twips;
}

Qt::Alignment ProgrammingGrid::columnAlignment(int col) const
{
    return col >= 0 && col < m_cols ? m_columns[col].alignment : Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void ProgrammingGrid::setColumnAlignment(int col, Qt::Alignment alignment)
{
    if (col >= 0 && col < m_cols)
        m_columns[col].alignment = alignment;
}
