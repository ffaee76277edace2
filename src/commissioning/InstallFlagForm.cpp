#include "InstallFlagForm.h"

bool InstallFlagForm::StandaloneMode = false;

InstallFlagForm::InstallFlagForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallFlagForm"));
    setWindowTitle(QStringLiteral("Flag"));
}
