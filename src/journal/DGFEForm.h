// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

// "Giornale di Fondo": selection and destination of a journal reading. A
// selection is by date (first and last day) or by receipt number (a day and
// the first and last receipt of it); it goes to the printer's own paper or
// to the screen (DGFECrtForm).
class DGFEForm : public QDialog
{
    Q_OBJECT
public:
    explicit DGFEForm(QWidget *parent = nullptr);

    QLabel *Label1;

    QGroupBox *frmData;
    QLabel *lblDataIni;
    QDateEdit *dtInizio;
    QLabel *lblDataEnd;
    QDateEdit *dtFine;
    QPushButton *btnDatePrn;
    QPushButton *btnDateCrt;

    QGroupBox *frmNScont;
    QLabel *lblNScontIni;
    QLineEdit *txtScontrIni;
    QLabel *lblNScontEnd;
    QLineEdit *txtScontrFine;
    QLabel *lblDataSc;
    QDateEdit *dtScontr;
    QPushButton *btnNumPrn;
    QPushButton *btnNumCrt;

    QPushButton *btnState;
    QPushButton *btnOk;

    void btnDatePrn_Click();
    void btnNumPrn_Click();
    void btnDateCrt_Click();
    void btnNumCrt_Click();
    void btnState_Click();
};
