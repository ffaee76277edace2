#include "RemoveStepForm.h"

RemoveStepForm::RemoveStepForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("RemoveStepForm"));
    setWindowTitle(QStringLiteral("Disintallazione"));
}
