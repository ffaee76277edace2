// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QPushButton;
class QTableWidget;

// "Anteprima Intestazione": the six header lines as the receipt shows them,
// filled in by the header screen before it is shown.
class PreviewForm : public QDialog
{
    Q_OBJECT
public:
    explicit PreviewForm(QWidget *parent = nullptr);

    QTableWidget *gridPreview; // 6 rows, 1 column, Courier New
    QPushButton *btnOk;        // "CHIUDI"

    void btnOk_Click();
};
