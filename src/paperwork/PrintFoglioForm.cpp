#include "PrintFoglioForm.h"

int16_t PrintFoglioForm::PrintMode = 1;

PrintFoglioForm::PrintFoglioForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("PrintFoglioForm"));
    setWindowTitle(QStringLiteral("Ufficio Entrate"));
}
