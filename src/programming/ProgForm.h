// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ProgrammingGrid.h"

#include <QDialog>
#include <QStringList>
#include <cstdint>
#include <memory>

class ProgrammingGridModel;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class XmlSettings;
struct EditorView;

// "Programmazione": one table of the printer edited row by row, directly on
// the printer. A row is read when it is selected and written by btnAdd.
// TableKind chooses the table: 0 cards, 1 cash descriptions, 2 tickets,
// 3 VAT, 4 departments, 5 operators, 6 preset cash amounts. The VAT rates
// and the departments are also kept in the per-printer file, for the steps
// of the commissioning that follow.
class ProgForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: true (with TableKind 4)
    // inside the commissioning; false, with the table's kind, from the menus.
    static bool WizardMode;
    static int16_t TableKind;

    explicit ProgForm(QWidget *parent = nullptr);
    ~ProgForm() override;

    // Shows the form again, loaded anew, after the trip to the VAT rates.
    int exec() override;

    QLabel *lblProg;
    QTableView *gridProg;
    ProgrammingGridModel *gridModel;
    QLabel *lblDesc;
    QLineEdit *txtDesc;
    QLabel *lblLimite;
    QLineEdit *txtLimite;
    QLabel *lblPercOpr;
    QLineEdit *txtPercOpr;
    QLabel *lblIva;
    QComboBox *comboIVA;
    QLabel *lblScontRiass;
    QComboBox *comboScontRiass;
    QLabel *lblGrpMerc;
    QComboBox *comboGrpMerc;
    QPushButton *btnIva;
    QPushButton *btnAdd;
    QPushButton *btnOK;

    // The VAT rates as whole numbers, filled by LoadTassa.
    int16_t tassaValues[4] = {0, 0, 0, 0};

    void LoadTassa();
    void SizeAndUnhideForm();
    void gridProg_Click(int column);
    void gridProg_SelChange();
    void btnAdd_Click();
    void btnOK_Click();
    void btnIva_Click();

    // The grid's current row (1 for the first table row).
    int currentRow() const;
    void selectRow(int gridRow); // makes it current and reads it

    // Position (from 1) of the first comboIVA item that is this rate; 1 when none is.
    int IvaRowOfRate(int rate) const;

private:
    void load();
    int16_t loadTable();
    void loadIvaCombo();
    bool eventFilter(QObject *watched, QEvent *event) override;

    std::unique_ptr<XmlSettings> settings;
    bool m_loading = false;  // selection changes made by the form itself read nothing
    bool m_reshow = false;   // exec shows the form once more
    bool m_inExec = false;
    bool m_ratesTrip = false; // btnIva: the form shows the rates meanwhile
};
