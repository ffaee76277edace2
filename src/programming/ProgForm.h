#pragma once

#include <QDialog>
#include <cstdint>

// "Programmazione": one table of the printer edited row by row.
class ProgForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: true (with TableKind 4)
    // inside the commissioning; false, with the table's kind, from the menus.
    static bool WizardMode;
    static int16_t TableKind;

    explicit ProgForm(QWidget *parent = nullptr);
};
