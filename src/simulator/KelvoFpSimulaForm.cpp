#include "KelvoFpSimulaForm.h"

KelvoFpSimulaForm::KelvoFpSimulaForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("KelvoFpSimulaForm"));
    setWindowTitle(QStringLiteral("KelvoFpDemo"));
}
