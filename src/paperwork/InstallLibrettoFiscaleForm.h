// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class LibrettoSheet;
class QLabel;
class QPushButton;

// "Compilazione libretto fiscale": how to fill in the fiscal booklet, with
// a picture of its page where the known values already stand. A step of the
// commissioning (leading on to the declaration) or, in SampleMode, a
// reference opened from the decommissioning.
class InstallLibrettoFiscaleForm : public QDialog
{
    Q_OBJECT
public:
    // true from the decommissioning: the forward button does not lead on.
    // Nothing sets it back.
    static bool SampleMode;

    explicit InstallLibrettoFiscaleForm(QWidget *parent = nullptr);

    QLabel *lblTitolo;
    LibrettoSheet *frmLibretto;
    QWidget *Image1;
    QLabel *lblRagSocUte;
    QLabel *lblIndFisc;
    QLabel *lblPIva;
    QLabel *lblDataInst;
    QLabel *lblAzzera;
    QLabel *lblQualif;
    QLabel *lblRagSoc2;
    QLabel *lblFirma;
    QPushButton *btnPrint;
    QPushButton *btnOK;

    void btnPrint_Click();
    void btnOK_Click();

private:
    QWidget *m_printed; // the title and the sheet: what goes on paper
};
