#pragma once

#include <QDialog>
#include <cstdint>

// "Flag": the printer's flags and parameters.
class InstallFlagForm : public QDialog
{
    Q_OBJECT
public:
    // false inside the commissioning, true from the simulator's menu.
    static bool StandaloneMode;

    explicit InstallFlagForm(QWidget *parent = nullptr);
};
