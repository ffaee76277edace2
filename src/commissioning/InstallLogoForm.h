#pragma once

#include <QDialog>
#include <cstdint>

// "Logo": the graphic logos of the receipt.
class InstallLogoForm : public QDialog
{
    Q_OBJECT
public:
    // false inside the commissioning, true from the simulator's menu.
    static bool StandaloneMode;

    explicit InstallLogoForm(QWidget *parent = nullptr);
};
