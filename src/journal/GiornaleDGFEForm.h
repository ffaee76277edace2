// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QPushButton;

// "Giornale di Fondo": the entry screen of the electronic journal, leading
// to its reading and to the change of its memory.
class GiornaleDGFEForm : public QDialog
{
    Q_OBJECT
public:
    explicit GiornaleDGFEForm(QWidget *parent = nullptr);

    QPushButton *btnRead;
    QPushButton *btnChange;
    QPushButton *btnOK;

    void btnRead_Click();
    void btnChange_Click();
};
