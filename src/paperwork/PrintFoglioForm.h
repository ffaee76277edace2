#pragma once

#include <QDialog>
#include <cstdint>

// "Ufficio Entrate": the declaration for the tax office, printed or saved.
class PrintFoglioForm : public QDialog
{
    Q_OBJECT
public:
    // 1 commissioning, 2 decommissioning, 3 the booklet's page.
    static int16_t PrintMode;

    explicit PrintFoglioForm(QWidget *parent = nullptr);
};
