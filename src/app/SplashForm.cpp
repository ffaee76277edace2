// SPDX-License-Identifier: GPL-3.0-or-later
#include "SplashForm.h"

#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

SplashForm::SplashForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("SplashForm"));
    setWindowTitle(QStringLiteral("Ricerca stampante..."));
    lblMessaggio = new QLabel(QStringLiteral("Connessione alla stampante in corso..."), this);
    lblMessaggio->setObjectName(QStringLiteral("lblMessaggio"));
    QFont bold = lblMessaggio->font();
    bold.setBold(true);
    lblMessaggio->setFont(bold);
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setTextVisible(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblMessaggio);
    layout->addWidget(ProgressBar1);
    setMinimumWidth(360);

    ProgressBar1->setRange(0, 40);
    ProgressBar1->setValue(0);
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(500);
    connect(Timer1, &QTimer::timeout, this, &SplashForm::Timer1_Timer);
    Timer1->start();
}

void SplashForm::Timer1_Timer()
{
    if (counter < ProgressBar1->maximum())
        ProgressBar1->setValue(counter);
    ++counter;
}
