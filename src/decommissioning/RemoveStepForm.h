// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QTabWidget;

// "Disintallazione": takes a printer out of service in seven steps, one tab
// each. The technician moves with INDIETRO/AVANTI or by clicking the tabs;
// every rule lives in the tab-change handler, which moves the strip back
// when a step is left undone or skipped.
class RemoveStepForm : public QDialog
{
    Q_OBJECT
public:
    explicit RemoveStepForm(QWidget *parent = nullptr);

    bool ClosureDone = false;         // the daily closure succeeded
    bool FiscalMemoryPrinted = false; // the fiscal memory print succeeded
    bool ModuleOpened = false;        // the declaration's screen was opened
    bool TabClickIgnored = false;     // swallow the next tab change (load only)
    bool StepRefused = false;         // the handler is moving the strip back itself

    QPushButton *btnBack;
    QPushButton *btnFwd;
    QTabWidget *SSTab1;
    QLabel *lblMat;
    QPushButton *btnZChiusura;
    QPushButton *btnPrint;
    QPushButton *btnSample;
    QPushButton *btnPrintMod;

    void btnBack_Click();
    void btnFwd_Click();
    void btnZChiusura_Click();
    void btnPrint_Click();
    void btnSample_Click();
    void btnPrintMod_Click();
    void SSTab1_Click(int previous, int tab);

private:
    void tabChanged(int tab);
    int m_shownTab = 0; // the tab the strip was on before the change
};
