// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtCore/qnamespace.h>

// A programming table in memory: rows of text cells, row 0 holding the
// column headers, each further row one table row. Every value is the text
// the printer's value converts to; a row whose cells are blank is a row the
// printer did not give. Columns also carry their width (twips, 0 hides the
// column) and alignment, which only the screen looks at.
class ProgrammingGrid
{
public:
    explicit ProgrammingGrid(int columns = 0);

    int rows() const { return int(m_cells.size()); }
    int cols() const { return m_cols; }

    // Rows are added blank or cut from the end; row 0 (headers) always stays.
    void setRows(int rows);
    // Columns are added blank or cut from the right.
    void setCols(int cols);
    // Appends a blank row and gives back its index.
    int addRow();
    // Only the header row is left.
    void clearRows() { setRows(1); }

    // Out-of-range cells read as empty and ignore writes.
    QString text(int row, int col) const;
    void setText(int row, int col, const QString &text);
    QStringList row(int row) const;
    // Sets the row's cells from the list, starting at column 0; missing ones blank.
    void setRow(int row, const QStringList &cells);

    // The cell's text converts to a number by the user's locale; blank is not numeric.
    bool isNumeric(int row, int col) const;
    // Blank once trimmed.
    bool isBlank(int row, int col) const;

    QString header(int col) const { return text(0, col); }
    int columnWidth(int col) const;           // twips
    void setColumnWidth(int col, int twips);
    Qt::Alignment columnAlignment(int col) const;
    void setColumnAlignment(int col, Qt::Alignment alignment);

private:
    struct Column
    {
        int width = 1000;
        Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    };
    int m_cols = 0;
    QList<QStringList> m_cells;
    QList<Column> m_columns;
};
