#include "InstallHeaderForm.h"

bool InstallHeaderForm::StandaloneMode = false;

InstallHeaderForm::InstallHeaderForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallHeaderForm"));
    setWindowTitle(QStringLiteral("Intestazione"));
}
