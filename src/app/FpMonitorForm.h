// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QGroupBox;
class QLabel;
class QPushButton;

// "Controllo Diagnostico": the printer's model, versions, state and journal
// in one place. Read once when the form loads; it is not refreshed.
class FpMonitorForm : public QDialog
{
    Q_OBJECT
public:
    explicit FpMonitorForm(QWidget *parent = nullptr);

    QGroupBox *frmStatePrn;
    QLabel *lblCartaTxt;
    QLabel *lblCarta;
    QLabel *lblDGFETxt;
    QLabel *lblDGFE;
    QLabel *lblCassettoTxt;
    QLabel *lblCassetto;
    QLabel *lblScontTxt;
    QLabel *lblScontrino;

    QGroupBox *frmStateDGFE;
    QLabel *lblOcc;
    QLabel *lblPercOcc;
    QLabel *Label8;
    QLabel *lblNumSc;
    QLabel *lblNumero;
    QLabel *lblStatoSc;
    QLabel *lblStato;

    QGroupBox *frmHW;
    QLabel *Label4;
    QLabel *LblModelloCassa;
    QLabel *Label2;
    QLabel *lblMem;
    QLabel *Label1;
    QLabel *lblCpu;

    QPushButton *btnOk;

    void ShowStatus();
    void ShowDgfeState();

private:
    void btnOk_Click();
};
