#include "InstallLibrettoFiscaleForm.h"

bool InstallLibrettoFiscaleForm::SampleMode = false;

InstallLibrettoFiscaleForm::InstallLibrettoFiscaleForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallLibrettoFiscaleForm"));
    setWindowTitle(QStringLiteral("Compilazione libretto fiscale"));
}
