// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

// "X Report": orders one of the printer's eight X reports, for the day or
// for the period. The report comes out of the printer; the form only asks.
class XRepForm : public QDialog
{
    Q_OBJECT
public:
    explicit XRepForm(QWidget *parent = nullptr);

    QGroupBox *frmFin;
    QPushButton *btnFinGior;
    QPushButton *btnFinPer;
    QGroupBox *frmOra;
    QPushButton *btnOraGio;
    QPushButton *btnOraPer;
    QGroupBox *frmOp;
    QPushButton *btnOperGio;
    QPushButton *btnOperPer;
    QLabel *lblOp;
    QComboBox *comboOperatore; // 0 .. 12
    QGroupBox *frmRep;
    QPushButton *btnRepGio;
    QPushButton *btnRepPer;
    QLabel *lblRep;
    QComboBox *comboReparto;   // 0 .. 40
    QPushButton *btnOk;

    void btnFinGior_Click();
    void btnFinPer_Click();
    void btnOraGio_Click();
    void btnOraPer_Click();
    void btnOperGio_Click();
    void btnOperPer_Click();
    void btnRepGio_Click();
    void btnRepPer_Click();

private:
    // Runs one report: nothing while the control is busy, the refusal told.
    template <typename Call>
    void report(Call call);
};
