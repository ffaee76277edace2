#pragma once

#include <QDialog>
#include <cstdint>

// "Compilazione libretto fiscale": the fiscal booklet's instructions.
class InstallLibrettoFiscaleForm : public QDialog
{
    Q_OBJECT
public:
    // true from the decommissioning: the forward button does not lead on.
    static bool SampleMode;

    explicit InstallLibrettoFiscaleForm(QWidget *parent = nullptr);
};
