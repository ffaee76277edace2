// SPDX-License-Identifier: GPL-3.0-or-later
#include "FpMonitorForm.h"

#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/ResultTexts.h"
#include "settings/Conversions.h"
#include "settings/TrimBlanks.h"
#include "ui/ReportResult.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLabel *newLabel(QWidget *parent, const char *name, const QString &text = QString())
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    return label;
}

QLabel *newField(QWidget *parent, const char *name)
{
    QLabel *field = newLabel(parent, name);
    field->setMinimumWidth(160);
    field->setFrameShape(QFrame::StyledPanel);
    field->setFrameShadow(QFrame::Sunken);
    return field;
}

QGroupBox *newFrame(QWidget *parent, const char *name, const QString &caption)
{
    auto *frame = new QGroupBox(caption, parent);
    frame->setObjectName(QLatin1String(name));
    return frame;
}

void showState(QLabel *field, const ResultTexts::StateText &state)
{
    QColor colour(Qt::black);
    if (state.colour == ResultTexts::StateColour::Red)
        colour = Qt::red;
    else if (state.colour == ResultTexts::StateColour::Blue)
        colour = Qt::blue;
    QPalette palette = field->palette();
    palette.setColor(QPalette::WindowText, colour);
    field->setPalette(palette);
    field->setText(state.text);
}

}

FpMonitorForm::FpMonitorForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FpMonitorForm"));
    setWindowTitle(QStringLiteral("Controllo Diagnostico"));

    frmStatePrn = newFrame(this, "frmStatePrn", QStringLiteral("Stato stampante"));
    lblCartaTxt = newLabel(frmStatePrn, "lblCartaTxt", QStringLiteral("Carta:"));
    lblCarta = newField(frmStatePrn, "lblCarta");
    lblDGFETxt = newLabel(frmStatePrn, "lblDGFETxt", QStringLiteral("DGFE:"));
    lblDGFE = newField(frmStatePrn, "lblDGFE");
    lblCassettoTxt = newLabel(frmStatePrn, "lblCassettoTxt", QStringLiteral("Cassetto:"));
    lblCassetto = newField(frmStatePrn, "lblCassetto");
    lblScontTxt = newLabel(frmStatePrn, "lblScontTxt", QStringLiteral("Scontrino:"));
    lblScontrino = newField(frmStatePrn, "lblScontrino");
    auto *statePrn = new QGridLayout(frmStatePrn);
    statePrn->addWidget(lblCartaTxt, 0, 0);
    statePrn->addWidget(lblCarta, 0, 1);
    statePrn->addWidget(lblDGFETxt, 1, 0);
    statePrn->addWidget(lblDGFE, 1, 1);
    statePrn->addWidget(lblCassettoTxt, 2, 0);
    statePrn->addWidget(lblCassetto, 2, 1);
    statePrn->addWidget(lblScontTxt, 3, 0);
    statePrn->addWidget(lblScontrino, 3, 1);

    frmStateDGFE = newFrame(this, "frmStateDGFE", QStringLiteral("Stato DGFE"));
    lblOcc = newLabel(frmStateDGFE, "lblOcc", QStringLiteral("Occupazione:"));
    lblPercOcc = newField(frmStateDGFE, "lblPercOcc");
    lblPercOcc->setMinimumWidth(60);
    Label8 = newLabel(frmStateDGFE, "Label8", QStringLiteral("%"));
    lblNumSc = newLabel(frmStateDGFE, "lblNumSc", QStringLiteral("Numero:"));
    lblNumero = newField(frmStateDGFE, "lblNumero");
    lblStatoSc = newLabel(frmStateDGFE, "lblStatoSc", QStringLiteral("Stato:"));
    lblStato = newField(frmStateDGFE, "lblStato");
    auto *stateDgfe = new QGridLayout(frmStateDGFE);
    stateDgfe->addWidget(lblOcc, 0, 0);
    auto *percent = new QHBoxLayout;
    percent->addWidget(lblPercOcc);
    percent->addWidget(Label8);
    percent->addStretch();
    stateDgfe->addLayout(percent, 0, 1);
    stateDgfe->addWidget(lblNumSc, 1, 0);
    stateDgfe->addWidget(lblNumero, 1, 1);
    stateDgfe->addWidget(lblStatoSc, 2, 0);
    stateDgfe->addWidget(lblStato, 2, 1);
    stateDgfe->setRowStretch(3, 1);

    frmHW = newFrame(this, "frmHW", QString());
    Label4 = newLabel(frmHW, "Label4", QStringLiteral("Modello Stampante:"));
    LblModelloCassa = newField(frmHW, "LblModelloCassa");
    Label2 = newLabel(frmHW, "Label2", QStringLiteral("Versione memoria fiscale:"));
    lblMem = newField(frmHW, "lblMem");
    Label1 = newLabel(frmHW, "Label1", QStringLiteral("Versione Stampante:"));
    lblCpu = newField(frmHW, "lblCpu");
    auto *hw = new QGridLayout(frmHW);
    hw->addWidget(Label4, 0, 0);
    hw->addWidget(LblModelloCassa, 0, 1);
    hw->addWidget(Label2, 1, 0);
    hw->addWidget(lblMem, 1, 1);
    hw->addWidget(Label1, 2, 0);
    hw->addWidget(lblCpu, 2, 1);
    // The fields take the frame's width; the captions keep just their own.
    hw->setColumnStretch(1, 1);
    statePrn->setColumnStretch(1, 1);
    stateDgfe->setColumnStretch(1, 1);

    btnOk = new QPushButton(QStringLiteral("CHIUDI"), this);
    btnOk->setObjectName(QStringLiteral("btnOk"));
    connect(btnOk, &QPushButton::clicked, this, &FpMonitorForm::btnOk_Click);

    auto *states = new QHBoxLayout;
    states->addWidget(frmStatePrn);
    states->addWidget(frmStateDGFE);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(states);
    layout->addWidget(frmHW);
    layout->addWidget(btnOk, 0, Qt::AlignRight);

    // Load
    ShowStatus();
    ShowDgfeState();
}

void FpMonitorForm::ShowStatus()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->ReadPrinterInfo(1);
    if (result != 0) {
        ReportResult(result);
        return;
    }
    const QString status = gFPControl->PrinterStatus();
    if (!status.isEmpty()) {
        QLabel *const fields[] = {lblCarta, lblDGFE, lblCassetto, lblScontrino};
        for (int group = 0; group < 4; ++group) {
            // Each digit is taken as a number: anything else ends the run.
            const int digit = Conv::ToInteger(status.mid(group, 1));
            showState(fields[group], ResultTexts::printerStatusDigit(group, digit));
        }
    }
    lblCpu->setText(TrimBlanks(gFPControl->FirmwareVersion()));
    // Meant to drop the leading zeros, but any of the first three zeros goes:
    // a version of 1000 shows as 1.
    QString memory = gFPControl->FiscalMemoryVersion();
    for (int replaced = 0, at = 0; replaced < 3; ++replaced) {
        at = int(memory.indexOf(QLatin1Char('0'), at));
        if (at < 0)
            break;
        memory[at] = QLatin1Char(' ');
    }
    lblMem->setText(TrimBlanks(memory));
    LblModelloCassa->setText(PrinterModelText(GetPrinterModel()));
}

void FpMonitorForm::ShowDgfeState()
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->ReadDgfeStatus(1);
    if (result != 0) {
        ReportResult(result);
        return;
    }
    if (const auto state = ResultTexts::dgfeState(gFPControl->DgfeState()))
        showState(lblStato, *state);
    lblPercOcc->setText(QString::number(gFPControl->DgfePercent()));
    lblNumero->setText(QString::number(gFPControl->DgfeNumber()));
}

void FpMonitorForm::btnOk_Click()
{
    accept();
}
