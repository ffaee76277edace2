// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QDateEdit;
class QLabel;
class QPushButton;
class QTimeEdit;
class QTimer;

// "Cambia Data/Ora": reads and sets the printer's clock, with the fiscal
// closure that the printer may demand first. A free tool, or the first step
// of the commissioning (WizardMode), which it leaves forwards only once the
// date has really been programmed.
class DataOraForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: true from the
    // commissioning, false from the sale keypad.
    static bool WizardMode;

    explicit DataOraForm(QWidget *parent = nullptr);

    bool dateSet = false; // SetDateTime succeeded while the form is open

    QLabel *lblData;
    QDateEdit *dtData;
    QLabel *lblOra;
    QTimeEdit *dtOra;
    QPushButton *btnGet;
    QPushButton *btnSet;
    QPushButton *btnOk;
    QLabel *lblDataInf;
    QTimer *Timer1; // puts the hint back after a notice

    void btnGet_Click();
    void btnSet_Click();
    void btnOk_Click();
    void Timer1_Timer();
};
