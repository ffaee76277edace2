#include "ProgForm.h"

bool ProgForm::WizardMode = false;
int16_t ProgForm::TableKind = 0;

ProgForm::ProgForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("ProgForm"));
    setWindowTitle(QStringLiteral("Programmazione"));
}
