#include "InstallLogoForm.h"

bool InstallLogoForm::StandaloneMode = false;

InstallLogoForm::InstallLogoForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallLogoForm"));
    setWindowTitle(QStringLiteral("Logo"));
}
