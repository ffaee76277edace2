// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// "Ufficio Entrate": the declaration for the tax office, printed on an A4
// printer or saved as a text file (PrintMode 1 commissioning, 2
// decommissioning); in PrintMode 3 only the choice of a printer, for the
// booklet's page.
class PrintFoglioForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created.
    static int16_t PrintMode;

    explicit PrintFoglioForm(QWidget *parent = nullptr);

    bool PrinterChosen = false; // btnOK was pressed
    // btnPrintFile was pressed. Nothing sets it back while the form is up:
    // a later "Stampa su carta" writes the file again.
    bool PrintToFile = false;
    QString OutputFileName;

    QLabel *lblSelPrn;
    QComboBox *comboPrn;
    QLabel *lblNCopie;
    QLineEdit *txtNCopie;
    QPushButton *btnPrint;
    QPushButton *btnPrintFile;
    QPushButton *btnOK;

    void FillPrinters();
    void comboPrn_Click();
    void btnPrint_Click();
    void btnPrintFile_Click();
    void btnOK_Click();

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void composePage();
    int copiesAsked() const;
};
