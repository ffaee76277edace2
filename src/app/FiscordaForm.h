// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>

class KelvoFPControl;
class QAction;
class QLabel;
class QMenu;
class QPushButton;

// The main form: the model of the connected printer and the four roads of
// the program (commissioning, decommissioning, journal, simulator).
class FiscordaForm : public QMainWindow
{
    Q_OBJECT
public:
    // The control lives as long as the form; the form does not own it.
    explicit FiscordaForm(KelvoFPControl *control, QWidget *parent = nullptr);
    ~FiscordaForm() override;

    // Configures the control from Settings.xml, opens the connection, probes
    // the printer behind the search screen, and gives back the model's text.
    void InizializzaOCX(QString &modelText);

    KelvoFPControl *KelvoFPControl1;
    QLabel *LabelModelloCassa;
    QPushButton *btnInstall;
    QPushButton *btnRemove;
    QPushButton *btnDGFE;
    QPushButton *btnSimul;
    QPushButton *btnEsci;
    QMenu *mTools;
    QAction *mSetupPrn;
    QAction *mXmlRead;
    QAction *mPrnRead;
    QMenu *mHelp;
    QAction *mAbout;

    static FiscordaForm *instance(); // the one main form, while it lives

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void btnInstall_Click();
    void btnRemove_Click();
    void btnDGFE_Click();
    void btnSimul_Click();
    void btnEsci_Click();
    void mSetupPrn_Click();
    void mXmlRead_Click();
    void mPrnRead_Click();
    void mAbout_Click();
};

QString ProgramVersionText(); // "1.0.48"
