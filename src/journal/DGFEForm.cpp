// SPDX-License-Identifier: GPL-3.0-or-later
#include "DGFEForm.h"

#include "DGFECrtForm.h"
#include "JournalDates.h"

#include "app/FpMonitorForm.h"
#include "printer/KelvoFPControl.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QDateEdit *datePicker(QWidget *parent, const char *name)
{
    auto *picker = named(new QDateEdit(QDate::currentDate(), parent), name);
    picker->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    picker->setCalendarPopup(true);
    return picker;
}

}

DGFEForm::DGFEForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("DGFEForm"));
    setWindowTitle(QStringLiteral("Giornale di Fondo"));

    Label1 = named(new QLabel(QStringLiteral("ATTENZIONE: La stampa può richiedere molto tempo per l'esecuzione. "
                                             "Per interrompere spegnere la stampante."),
                              this),
                   "Label1");
    Label1->setWordWrap(true);

    frmData = named(new QGroupBox(QStringLiteral("Per data"), this), "frmData");
    lblDataIni = named(new QLabel(QStringLiteral("data iniziale"), frmData), "lblDataIni");
    dtInizio = datePicker(frmData, "dtInizio");
    lblDataEnd = named(new QLabel(QStringLiteral("data finale"), frmData), "lblDataEnd");
    dtFine = datePicker(frmData, "dtFine");
    btnDatePrn = named(new QPushButton(QStringLiteral("Su stampante"), frmData), "btnDatePrn");
    btnDateCrt = named(new QPushButton(QStringLiteral("Su video"), frmData), "btnDateCrt");
    auto *byDate = new QGridLayout(frmData);
    byDate->addWidget(lblDataIni, 0, 0);
    byDate->addWidget(dtInizio, 0, 1);
    byDate->addWidget(lblDataEnd, 1, 0);
    byDate->addWidget(dtFine, 1, 1);
    byDate->addWidget(btnDatePrn, 3, 0);
    byDate->addWidget(btnDateCrt, 3, 1);
    byDate->setRowStretch(2, 1);

    frmNScont = named(new QGroupBox(QStringLiteral("Per numero scontrino"), this), "frmNScont");
    lblNScontIni = named(new QLabel(QStringLiteral("n° scontrino iniziale"), frmNScont), "lblNScontIni");
    txtScontrIni = named(new QLineEdit(QStringLiteral("1"), frmNScont), "txtScontrIni");
    lblNScontEnd = named(new QLabel(QStringLiteral("n° scontrino finale"), frmNScont), "lblNScontEnd");
    txtScontrFine = named(new QLineEdit(QStringLiteral("1"), frmNScont), "txtScontrFine");
    lblDataSc = named(new QLabel(QStringLiteral("data"), frmNScont), "lblDataSc");
    dtScontr = datePicker(frmNScont, "dtScontr");
    btnNumPrn = named(new QPushButton(QStringLiteral("Su stampante"), frmNScont), "btnNumPrn");
    btnNumCrt = named(new QPushButton(QStringLiteral("Su video"), frmNScont), "btnNumCrt");
    auto *byNumber = new QGridLayout(frmNScont);
    byNumber->addWidget(lblNScontIni, 0, 0);
    byNumber->addWidget(txtScontrIni, 0, 1);
    byNumber->addWidget(lblNScontEnd, 1, 0);
    byNumber->addWidget(txtScontrFine, 1, 1);
    byNumber->addWidget(lblDataSc, 2, 0);
    byNumber->addWidget(dtScontr, 2, 1);
    byNumber->addWidget(btnNumPrn, 3, 0);
    byNumber->addWidget(btnNumCrt, 3, 1);

    btnState = named(new QPushButton(QStringLiteral("Controllo Stato DGFE"), this), "btnState");
    btnOk = named(new QPushButton(QStringLiteral("ESCI"), this), "btnOk");

    auto *frames = new QHBoxLayout;
    frames->addWidget(frmData);
    frames->addWidget(frmNScont);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(btnState);
    buttons->addStretch();
    buttons->addWidget(btnOk);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addLayout(frames);
    layout->addLayout(buttons);

    connect(btnDatePrn, &QPushButton::clicked, this, &DGFEForm::btnDatePrn_Click);
    connect(btnNumPrn, &QPushButton::clicked, this, &DGFEForm::btnNumPrn_Click);
    connect(btnDateCrt, &QPushButton::clicked, this, &DGFEForm::btnDateCrt_Click);
    connect(btnNumCrt, &QPushButton::clicked, this, &DGFEForm::btnNumCrt_Click);
    connect(btnState, &QPushButton::clicked, this, &DGFEForm::btnState_Click);
    connect(btnOk, &QPushButton::clicked, this, &QDialog::accept);
}

void DGFEForm::btnDatePrn_Click()
{
    if (gFPControl->Busy())
        return;
    // No check of the order of the dates: the printer answers for itself.
    const JournalDates::Parts from = JournalDates::parts(dtInizio);
    const JournalDates::Parts to = JournalDates::parts(dtFine);
    int16_t result = gFPControl->PrintDgfeByDate(1, from.day, from.month, from.year, to.day, to.month, to.year);
    ReportResult(result);
}

void DGFEForm::btnNumPrn_Click()
{
    if (!Conv::IsNumeric(txtScontrIni->text()) || !Conv::IsNumeric(txtScontrFine->text())) {
        MsgBox::show(QStringLiteral("Inserire valori numerici!"));
        return;
    }
    if (gFPControl->Busy())
        return;
    // A number that passed the test but does not fit a receipt number gets
    // the same word as the screen road gives it, rather than ending the run.
    int16_t first = 0;
    int16_t last = 0;
    try {
        first = Conv::ToInteger(txtScontrIni->text());
        last = Conv::ToInteger(txtScontrFine->text());
    } catch (const RunTimeError &) {
        DGFECrtForm::ReportBadReceiptNumber(txtScontrIni->text(), txtScontrFine->text());
        return;
    }
    const JournalDates::Parts day = JournalDates::parts(dtScontr);
    int16_t result = gFPControl->PrintDgfeByNumber(1, day.day, day.month, day.year, first, last);
    ReportResult(result);
}

void DGFEForm::btnDateCrt_Click()
{
    // The numbers are not checked on the roads to the screen: the reading
    // converts them when it needs them.
    DGFECrtForm::ByNumber = false;
    DGFECrtForm::FromDate = dtInizio;
    DGFECrtForm::ToDate = dtFine;
    DGFECrtForm form(this);
    form.exec();
}

void DGFEForm::btnNumCrt_Click()
{
    DGFECrtForm::ByNumber = true;
    DGFECrtForm::ReceiptDate = dtScontr;
    DGFECrtForm::FirstReceipt = txtScontrIni->text();
    DGFECrtForm::LastReceipt = txtScontrFine->text();
    DGFECrtForm form(this);
    form.exec();
}

void DGFEForm::btnState_Click()
{
    FpMonitorForm form(this);
    form.exec();
}
