// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QCheckBox;
class QPushButton;

// "Logo": the commissioning's logo step. It opens the screens that send the
// standard or a personal logo and clears the printer's logo memory; nothing
// is sent from here when it is left.
class InstallLogoForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: false inside the
    // commissioning, true from the simulator's menu.
    static bool StandaloneMode;

    explicit InstallLogoForm(QWidget *parent = nullptr);

    QCheckBox *chkLogo;
    QPushButton *btnLogoStd;
    QPushButton *btnLogoPers;
    QPushButton *btnDelLoghi;
    QPushButton *btnNext;

    void chkLogo_Click();
    void btnLogoStd_Click();
    void btnLogoPers_Click();
    void btnDelLoghi_Click();
    void btnNext_Click();
};
