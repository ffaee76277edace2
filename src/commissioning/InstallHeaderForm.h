#pragma once

#include <QDialog>
#include <cstdint>

// "Intestazione": the receipt header, read back, composed and programmed.
class InstallHeaderForm : public QDialog
{
    Q_OBJECT
public:
    // Set by the opener before the form is created: false inside the
    // commissioning, true from the simulator's menu.
    static bool StandaloneMode;

    explicit InstallHeaderForm(QWidget *parent = nullptr);
};
