#include "LoghiForm.h"

LoghiForm::LoghiForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("LoghiForm"));
    setWindowTitle(QStringLiteral("Scelta loghi"));
}

void LoghiForm::SaveLogo(QString &, int16_t &result)
{
    result = 1;
}

void LoghiForm::ProgFlag(int16_t &, int16_t &)
{
}

QString StandardLogoFile(int16_t)
{
    return QString();
}
