// SPDX-License-Identifier: GPL-3.0-or-later
#include "DataOraForm.h"

#include "commissioning/InstallHeaderForm.h"

#include "printer/KelvoFPControl.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/ReportResult.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimeEdit>
#include <QTimer>
#include <QVBoxLayout>

bool DataOraForm::WizardMode = false;

namespace {
const QString kHint = QStringLiteral(
    "La data non può essere inferiore a quella salvata durante l'ultima chiusura fiscale!");
const QString kReadDone = QStringLiteral("Lettura Data/Ora avvenuta.");
}

DataOraForm::DataOraForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DataOraForm"));
    DialogKeys::ignoreEscape(this, WizardMode);
    setWindowTitle(QStringLiteral("Cambia Data/Ora"));

    lblData = new QLabel(QStringLiteral("Data"), this);
    lblData->setObjectName(QStringLiteral("lblData"));
    dtData = new QDateEdit(QDate::currentDate(), this);
    dtData->setObjectName(QStringLiteral("dtData"));
    dtData->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    dtData->setCalendarPopup(true);
    lblOra = new QLabel(QStringLiteral("Ora"), this);
    lblOra->setObjectName(QStringLiteral("lblOra"));
    dtOra = new QTimeEdit(QTime::currentTime(), this);
    dtOra->setObjectName(QStringLiteral("dtOra"));
    dtOra->setDisplayFormat(QStringLiteral("HH:mm"));
    btnGet = new QPushButton(QStringLiteral("leggi"), this);
    btnGet->setObjectName(QStringLiteral("btnGet"));
    btnSet = new QPushButton(QStringLiteral("imposta"), this);
    btnSet->setObjectName(QStringLiteral("btnSet"));
    btnOk = new QPushButton(QStringLiteral("ESCI"), this);
    btnOk->setObjectName(QStringLiteral("btnOk"));
    lblDataInf = new QLabel(kHint, this);
    lblDataInf->setObjectName(QStringLiteral("lblDataInf"));
    lblDataInf->setWordWrap(true);
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(2000);

    auto *pickers = new QGridLayout;
    pickers->addWidget(lblData, 0, 0);
    pickers->addWidget(dtData, 0, 1);
    pickers->addWidget(btnGet, 0, 2);
    pickers->addWidget(lblOra, 1, 0);
    pickers->addWidget(dtOra, 1, 1);
    pickers->addWidget(btnSet, 1, 2);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(pickers);
    layout->addWidget(lblDataInf);
    layout->addWidget(btnOk, 0, Qt::AlignRight);
    setMinimumWidth(420);

    connect(btnGet, &QPushButton::clicked, this, &DataOraForm::btnGet_Click);
    connect(btnSet, &QPushButton::clicked, this, &DataOraForm::btnSet_Click);
    connect(btnOk, &QPushButton::clicked, this, &DataOraForm::btnOk_Click);
    connect(Timer1, &QTimer::timeout, this, &DataOraForm::Timer1_Timer);

    // Load
    btnGet_Click();
    dateSet = false;
    btnOk->setText(WizardMode ? QStringLiteral("AVANTI") : QStringLiteral("OK"));
}

void DataOraForm::btnGet_Click()
{
    if (gFPControl->Busy()) {
        MsgBox::show(QStringLiteral("Controllo occupato!"));
    } else {
        int16_t result = gFPControl->ReadDateTime();
        if (result == 0) {
            const QDateTime now = gFPControl->DateTime();
            dtData->setDate(now.date());
            dtOra->setTime(now.time());
            if (WizardMode)
                lblDataInf->setText(kReadDone);
            else
                MsgBox::show(kReadDone);
        } else {
            ReportResult(result);
        }
    }
    Timer1->start();
}

void DataOraForm::Timer1_Timer()
{
    lblDataInf->setText(kHint);
    Timer1->stop();
}

void DataOraForm::btnSet_Click()
{
    if (gFPControl->ReadClosureState(1) != 0)
        return;
    const int32_t closureState = gFPControl->ClosureState();
    if (closureState > 1) {
        const auto answer = MsgBox::show(QStringLiteral("Per programmare la data bisogna fare una chiusura fiscale. "
                                                        "Procedo con la chiusura fiscale?"),
                                         QMessageBox::Yes | QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return;
        int16_t op = 1;
        if (gFPControl->FiscalClosure(op) != 0)
            return;
    } else if (closureState < 1) {
        return;
    }

    // Plain numbers: no leading zeros, the year with its four digits.
    const QDate date = dtData->date();
    const QTime time = dtOra->time();
    const auto day = int16_t(date.day());
    const auto month = int16_t(date.month());
    const auto year = int16_t(date.year());
    const auto hour = int16_t(time.hour());
    const auto minute = int16_t(time.minute());
    const QString question = QStringLiteral("Sei sicuro di voler programmare la Data %1/%2/%3 e l'ora %4:%5")
                                 .arg(day).arg(month).arg(year).arg(hour).arg(minute);
    if (MsgBox::show(question, QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return; // a closure made above stays made

    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->SetDateTime(day, month, year, hour, minute);
    if (result == 0) {
        MsgBox::show(QStringLiteral("Aggiornamento Data/Ora eseguito"));
        dateSet = true;
    } else {
        ReportResult(result);
    }
}

void DataOraForm::btnOk_Click()
{
    if (!WizardMode) {
        accept();
        return;
    }
    if (!dateSet) {
        // Reading the clock is not enough: the date has to be programmed.
        MsgBox::show(QStringLiteral("Impostare la Data/Ora prima di proseguire!"));
        return;
    }
    accept();
    InstallHeaderForm::StandaloneMode = false;
    InstallHeaderForm next(parentWidget());
    next.exec();
}
