// SPDX-License-Identifier: GPL-3.0-or-later
#include "XRepForm.h"

#include "printer/KelvoFPControl.h"
#include "settings/Conversions.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QPushButton *reportButton(QWidget *parent, const char *name, const QString &caption)
{
    auto *b = named(new QPushButton(caption, parent), name);
    b->setMinimumSize(120, 36);
    return b;
}

QComboBox *numberList(QWidget *parent, const char *name, int highest)
{
    auto *combo = named(new QComboBox(parent), name); // a list: no free typing
    for (int n = 0; n <= highest; ++n)
        combo->addItem(QString::number(n));
    combo->setCurrentText(QStringLiteral("1"));
    return combo;
}

// Every report's first argument.
constexpr int16_t One = 1;

} // namespace

XRepForm::XRepForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("XRepForm"));
    setWindowTitle(QStringLiteral("X Report"));
    const QString daily = QStringLiteral("Giornaliero");
    const QString periodic = QStringLiteral("Periodico");

    frmFin = named(new QGroupBox(QStringLiteral("Finanziario"), this), "frmFin");
    btnFinGior = reportButton(frmFin, "btnFinGior", daily);
    btnFinPer = reportButton(frmFin, "btnFinPer", periodic);
    auto *fin = new QHBoxLayout(frmFin);
    fin->addWidget(btnFinGior);
    fin->addWidget(btnFinPer);

    frmOra = named(new QGroupBox(QStringLiteral("Orario"), this), "frmOra");
    btnOraGio = reportButton(frmOra, "btnOraGio", daily);
    btnOraPer = reportButton(frmOra, "btnOraPer", periodic);
    auto *ora = new QHBoxLayout(frmOra);
    ora->addWidget(btnOraGio);
    ora->addWidget(btnOraPer);

    frmOp = named(new QGroupBox(QStringLiteral("Operatore"), this), "frmOp");
    btnOperGio = reportButton(frmOp, "btnOperGio", daily);
    btnOperPer = reportButton(frmOp, "btnOperPer", periodic);
    lblOp = named(new QLabel(QStringLiteral("Operatore"), frmOp), "lblOp");
    comboOperatore = numberList(frmOp, "comboOperatore", 12);
    auto *op = new QGridLayout(frmOp);
    op->addWidget(btnOperGio, 0, 0);
    op->addWidget(btnOperPer, 0, 1);
    op->addWidget(lblOp, 1, 0);
    op->addWidget(comboOperatore, 1, 1);

    frmRep = named(new QGroupBox(QStringLiteral("Reparto"), this), "frmRep");
    btnRepGio = reportButton(frmRep, "btnRepGio", daily);
    btnRepPer = reportButton(frmRep, "btnRepPer", periodic);
    lblRep = named(new QLabel(QStringLiteral("Reparto"), frmRep), "lblRep");
    comboReparto = numberList(frmRep, "comboReparto", 40);
    auto *rep = new QGridLayout(frmRep);
    rep->addWidget(btnRepGio, 0, 0);
    rep->addWidget(btnRepPer, 0, 1);
    rep->addWidget(lblRep, 1, 0);
    rep->addWidget(comboReparto, 1, 1);

    btnOk = reportButton(this, "btnOk", QStringLiteral("ESCI"));

    auto *frames = new QGridLayout;
    frames->addWidget(frmFin, 0, 0);
    frames->addWidget(frmOra, 0, 1);
    frames->addWidget(frmOp, 1, 0);
    frames->addWidget(frmRep, 1, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(frames);
    layout->addWidget(btnOk, 0, Qt::AlignRight);

    connect(btnFinGior, &QPushButton::clicked, this, &XRepForm::btnFinGior_Click);
    connect(btnFinPer, &QPushButton::clicked, this, &XRepForm::btnFinPer_Click);
    connect(btnOraGio, &QPushButton::clicked, this, &XRepForm::btnOraGio_Click);
    connect(btnOraPer, &QPushButton::clicked, this, &XRepForm::btnOraPer_Click);
    connect(btnOperGio, &QPushButton::clicked, this, &XRepForm::btnOperGio_Click);
    connect(btnOperPer, &QPushButton::clicked, this, &XRepForm::btnOperPer_Click);
    connect(btnRepGio, &QPushButton::clicked, this, &XRepForm::btnRepGio_Click);
    connect(btnRepPer, &QPushButton::clicked, this, &XRepForm::btnRepPer_Click);
    connect(btnOk, &QPushButton::clicked, this, &QDialog::accept);
}

template <typename Call>
void XRepForm::report(Call call)
{
    if (gFPControl->Busy())
        return;
    int16_t result = call(*gFPControl);
    ReportResult(result);
}

void XRepForm::btnFinGior_Click()
{
    report([](KelvoFPControl &c) { return c.PrintXFinanziarioGiorno(One); });
}

void XRepForm::btnFinPer_Click()
{
    report([](KelvoFPControl &c) { return c.PrintXFinanziarioPeriodo(One); });
}

void XRepForm::btnOraGio_Click()
{
    report([](KelvoFPControl &c) { return c.PrintXOrarioGiorno(One); });
}

void XRepForm::btnOraPer_Click()
{
    report([](KelvoFPControl &c) { return c.PrintXOrarioPeriodo(One); });
}

void XRepForm::btnOperGio_Click()
{
    report([this](KelvoFPControl &c) { return c.PrintXOperatoreGiorno(One, Conv::ToInteger(comboOperatore->currentText())); });
}

void XRepForm::btnOperPer_Click()
{
    report([this](KelvoFPControl &c) { return c.PrintXOperatorePeriodo(One, Conv::ToInteger(comboOperatore->currentText())); });
}

void XRepForm::btnRepGio_Click()
{
    report([this](KelvoFPControl &c) { return c.PrintXRepartoGiorno(One, Conv::ToInteger(comboReparto->currentText())); });
}

void XRepForm::btnRepPer_Click()
{
    report([this](KelvoFPControl &c) { return c.PrintXRepartoPeriodo(One, Conv::ToInteger(comboReparto->currentText())); });
}
