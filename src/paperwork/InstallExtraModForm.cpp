#include "InstallExtraModForm.h"

InstallExtraModForm::InstallExtraModForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallExtraModForm"));
    setWindowTitle(QStringLiteral("Dati cliente"));
}
