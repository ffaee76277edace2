#include "DGFEForm.h"

DGFEForm::DGFEForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("DGFEForm"));
    setWindowTitle(QStringLiteral("Giornale di Fondo"));
}
