#pragma once

class ProgrammingGridModel;
class QTableView;
class QWidget;

// A grid on a form: a read-only table view named as the form's grid, rows
// selected whole, over the model. Column widths follow the grid's, from
// twips at the screen's resolution; a width of 0 hides the column.
QTableView *MakeGridView(const char *objectName, ProgrammingGridModel *model, QWidget *parent);
void ApplyColumnWidths(QTableView *view);
// Widens each shown column whose header would not fit, so that every header
// reads whole; a column wide enough keeps its width.
void FitColumnsToHeaders(QTableView *view);
int TwipsToPixels(int twips, int logicalDpiX);
