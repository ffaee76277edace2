#include "GiornaleDGFEForm.h"

GiornaleDGFEForm::GiornaleDGFEForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("GiornaleDGFEForm"));
    setWindowTitle(QStringLiteral("Giornale di Fondo"));
}
