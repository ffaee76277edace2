// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class ProgrammingGridModel;
class QTableView;
class QWidget;

// A grid on a form: a read-only table view named as the form's grid, rows
// selected whole, over the model. Each column is as wide as the grid's
// width for it (twips at the screen's resolution), and wider where its
// header or its widest cell would not fit; a width of 0 hides the column.
// The last column takes whatever room is left.
QTableView *MakeGridView(const char *objectName, ProgrammingGridModel *model, QWidget *parent);
void ApplyColumnWidths(QTableView *view);
int TwipsToPixels(int twips, int logicalDpiX);
