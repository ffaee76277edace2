#pragma once

#include <QDialog>
#include <cstdint>

// "Dati cliente": the customer's data for the paperwork.
class InstallExtraModForm : public QDialog
{
    Q_OBJECT
public:
    explicit InstallExtraModForm(QWidget *parent = nullptr);
};
