#include "XmlViewForm.h"

int16_t XmlViewForm::FormMode = 1;
QString XmlViewForm::XmlFile;

XmlViewForm::XmlViewForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("XmlViewForm"));
    setWindowTitle(QStringLiteral("Dati Programmazione"));
}
