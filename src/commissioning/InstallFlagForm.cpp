// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstallFlagForm.h"

#include "HeaderPrinterFile.h"

#include "paperwork/InstallExtraModForm.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"
#include "settings/XmlSettings.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

bool InstallFlagForm::StandaloneMode = false;

const std::array<InstallFlagForm::FlagDef, 13> InstallFlagForm::Flags{{
    {0, 1, "MODALITA'  APPRENDIMENTO", 0},
    {1, 4, "ABILITA OPERATORI", 0},
    {2, 3, "REPORT APERTURA CASSETTO", 0},
    {3, 7, "ABILITA STAMPA OPERATORI", 0},
    {4, 12, "VISUALIZZA QUASI FINE CARTA", 1},
    {5, 8, "STAMPA NUMERO PEZZI", 0},
    {7, 13, "OBBLIGA SUBTOTALE", 0},
    {9, 26, "APERTURA AUTOMATICA CASSETTO", 1},
    {10, 25, "STAMPA EURO/LIRE", 0},
    {6, 28, "STAMPA CODICE PRODOTTO", 0},
    {11, 27, "RICHIEDI ACK PROTOCOLLO PC", 1},
    {13, 9, "CODICE PRODOTTO LUNGO", 0},
    {8, 11, "TRASMISSIONE FINE CARTA", 0},
}};

namespace {

// The commissioning's form is one instance for the whole run, which keeps
// this across its openings; the simulator's menu makes a new one each time.
bool sharedFirstReadDone = false;

struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QString key(int16_t number)
{
    return QStringLiteral("f%1").arg(number);
}

const QString kFlags = QStringLiteral("InstallFlagS14");
const QString kParams = QStringLiteral("InstallFlagS15");

} // namespace

InstallFlagForm::InstallFlagForm(QWidget *parent) : QDialog(parent), settings(std::make_unique<XmlSettings>())
{
    setObjectName(QStringLiteral("InstallFlagForm"));
    DialogKeys::ignoreEscape(this, !StandaloneMode);
    setWindowTitle(QStringLiteral("Flag"));

    auto *flagGrid = new QGridLayout;
    for (const FlagDef &f : Flags) {
        auto *box = new QCheckBox(QString::fromUtf8(f.caption), this);
        box->setObjectName(QStringLiteral("Check1_%1").arg(f.index));
        box->setEnabled(false);
        Check1[size_t(f.index)] = box;
    }
    int row = 0;
    for (QCheckBox *box : Check1) {
        if (box) {
            flagGrid->addWidget(box, row % 7, row / 7);
            ++row;
        }
    }

    auto field = [this](const char *name) {
        auto *edit = named(new QLineEdit(this), name);
        edit->setEnabled(false);
        edit->setMaximumWidth(80);
        return edit;
    };
    txtIntensPrn = field("txtIntensPrn");
    txtContrasto = field("txtContrasto");
    txtNCassa = field("txtNCassa");
    txtSpegniVisore = field("txtSpegniVisore");
    comboLarg = named(new QComboBox(this), "comboLarg");
    comboLarg->addItems({QStringLiteral("80 mm"), QStringLiteral("60 mm"), QStringLiteral("58 mm")});
    comboLarg->setCurrentIndex(-1); // until the printer has said
    comboLarg->setEnabled(false);
    lblIntensPrn = named(new QLabel(QStringLiteral("INTENSITA' STAMPA (1 - 25)"), this), "lblIntensPrn");
    lblContrasto = named(new QLabel(QStringLiteral("CONTRASTO VISORE (1 - 15)"), this), "lblContrasto");
    lblNCassa = named(new QLabel(QStringLiteral("NUMERO CASSA"), this), "lblNCassa");
    lblLarg = named(new QLabel(QStringLiteral("LARGHEZZA SCONTRINO"), this), "lblLarg");
    lblSpegniVisore = named(new QLabel(QStringLiteral("AUTOSPEGNIMENTO VISORE (in minuti 0 - 99, 0 disablita) "), this),
                            "lblSpegniVisore");
    auto *paramGrid = new QGridLayout;
    const std::pair<QLabel *, QWidget *> params[] = {{lblIntensPrn, txtIntensPrn},
                                                     {lblContrasto, txtContrasto},
                                                     {lblNCassa, txtNCassa},
                                                     {lblLarg, comboLarg},
                                                     {lblSpegniVisore, txtSpegniVisore}};
    row = 0;
    for (const auto &[label, widget] : params) {
        paramGrid->addWidget(label, row, 0);
        paramGrid->addWidget(widget, row, 1);
        ++row;
    }
    for (QLineEdit *edit : {txtIntensPrn, txtContrasto, txtSpegniVisore})
        edit->installEventFilter(this);

    chkImposta = named(new QCheckBox(QStringLiteral("Impostazioni flag"), this), "chkImposta");
    btnDefault = named(new QPushButton(QStringLiteral("Ripristina impostazioni di default"), this), "btnDefault");
    btnDefault->setEnabled(false);
    btnNext = named(new QPushButton(QStringLiteral("AVANTI"), this), "btnNext");

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(chkImposta);
    buttons->addWidget(btnDefault);
    buttons->addStretch();
    buttons->addWidget(btnNext);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(flagGrid);
    layout->addLayout(paramGrid);
    layout->addLayout(buttons);

    connect(chkImposta, &QCheckBox::clicked, this, &InstallFlagForm::chkImposta_Click);
    connect(btnDefault, &QPushButton::clicked, this, &InstallFlagForm::btnDefault_Click);
    connect(btnNext, &QPushButton::clicked, this, &InstallFlagForm::btnNext_Click);

    // Load
    if (!StandaloneMode)
        firstReadDone = sharedFirstReadDone;
    HeaderPrinterFile::Open(*settings);
    programOk = true;
    if (StandaloneMode) {
        chkImposta->setChecked(true);
        chkImposta->hide();
        btnNext->setText(QStringLiteral("Programma"));
    }
    ReadFirmwareInfo();
    chkImposta_Click();
}

InstallFlagForm::~InstallFlagForm() = default;

QWidget *InstallFlagForm::paramField(int16_t number) const
{
    switch (number) {
    case 7: return txtIntensPrn;
    case 8: return txtContrasto;
    case 11: return txtNCassa;
    case 12: return comboLarg;
    case 13: return txtSpegniVisore;
    default: return nullptr;
    }
}

void InstallFlagForm::ReadFlagField(const FlagDef &flag)
{
    QCheckBox *box = Check1[size_t(flag.index)];
    int16_t result = 0;
    if (!gFPControl->Busy()) {
        int16_t number = flag.number;
        result = gFPControl->ReadFlag(number);
    }
    if (result != 0) {
        ReportResult(result); // the box keeps its state and its enabling
        return;
    }
    box->setEnabled(chkImposta->isChecked());
    box->setChecked(gFPControl->FlagValue() != 0);
}

void InstallFlagForm::ReadFlagField(int16_t paramNumber)
{
    int16_t result = 0;
    if (!gFPControl->Busy()) {
        int16_t number = paramNumber;
        result = gFPControl->ReadParam(number);
    }
    // The field is the one the printer names in its answer.
    const int16_t answered = gFPControl->ParamNumber();
    QWidget *widget = paramField(answered);
    if (!widget)
        return;
    if (result != 0) {
        widget->setEnabled(false);
        ReportResult(result);
        return;
    }
    widget->setEnabled(chkImposta->isChecked());
    const int16_t value = gFPControl->ParamValue();
    if (widget == comboLarg)
        comboLarg->setCurrentIndex(value);
    else
        static_cast<QLineEdit *>(widget)->setText(Conv::Text(int(value)));
}

void InstallFlagForm::chkImposta_Click()
{
    {
        WaitCursor hourglass;
        for (const FlagDef &f : Flags)
            ReadFlagField(f);
        for (int16_t n : ParamNumbers)
            ReadFlagField(n);
        btnDefault->setEnabled(chkImposta->isChecked());
    }
    if (!StandaloneMode && firstReadDone && chkImposta->isChecked())
        MsgBox::show(QStringLiteral("Lettura flag eseguita!"), QMessageBox::Ok, QMessageBox::Information,
                     MsgBox::applicationTitle());
    else
        firstReadDone = true;
    if (!StandaloneMode)
        sharedFirstReadDone = firstReadDone;
}

void InstallFlagForm::ResetFlagDefaults()
{
    for (const FlagDef &f : Flags)
        Check1[size_t(f.index)]->setChecked(f.defaultValue != 0);
    txtIntensPrn->setText(QStringLiteral("12"));
    txtContrasto->setText(QStringLiteral("8"));
    txtNCassa->setText(QStringLiteral("0"));
    comboLarg->setCurrentIndex(0);
    txtSpegniVisore->setText(QStringLiteral("0"));
}

void InstallFlagForm::btnDefault_Click()
{
    ResetFlagDefaults();
}

bool InstallFlagForm::ValidateField(QLineEdit *field)
{
    int low = 0;
    int high = 99;
    if (field == txtIntensPrn) {
        low = 1;
        high = 25;
    } else if (field == txtContrasto) {
        low = 1;
        high = 15;
    } else if (field != txtSpegniVisore) {
        return true;
    }
    const QString text = field->text();
    if (text.isEmpty() || !Conv::IsNumeric(text))
        return true;
    const int16_t value = Conv::ToInteger(text); // beyond an Integer ends the run
    if (value >= low && value <= high)
        return true;
    MsgBox::show(QStringLiteral("Valore fuori scala!"));
    field->setFocus(Qt::OtherFocusReason);
    return false;
}

bool InstallFlagForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && isVisible()) {
        // Only when the focus moves on inside the form: a message box or
        // another window taking it, or the form going, is no leaving of the
        // field.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            ValidateField(static_cast<QLineEdit *>(watched));
    }
    return QDialog::eventFilter(watched, event);
}

void InstallFlagForm::ProgramFlags(const FlagDef &flag)
{
    if (!programOk)
        return;
    const int box = Check1[size_t(flag.index)]->isChecked() ? 1 : 0;
    if (chkImposta->isChecked() && !gFPControl->Busy()) {
        int16_t number = flag.number;
        // Only a flag that really changes is sent; a failed comparison read
        // passes over the flag in silence.
        if (gFPControl->ReadFlag(number) == 0 && gFPControl->FlagValue() != box && !gFPControl->Busy()) {
            number = flag.number;
            int16_t result = gFPControl->WriteFlag(number, int16_t(box));
            ReportResult(result);
            programOk = result == 0;
        }
    }
    // A value the printer refused is not recorded as if it held it.
    if (programOk)
        settings->SetValueAtt(kFlags, key(flag.number), box);
}

void InstallFlagForm::ProgramFlags(int16_t paramNumber)
{
    if (!programOk)
        return;
    auto *edit = qobject_cast<QLineEdit *>(paramField(paramNumber));
    if (chkImposta->isChecked()) {
        // Always sent: the printer's value is not compared.
        int16_t result = 0;
        int16_t number = paramNumber;
        if (paramNumber == 12) {
            if (!gFPControl->Busy())
                result = gFPControl->WriteParam(number, int16_t(comboLarg->currentIndex()));
        } else if (paramNumber == 13) {
            // No numeric test here: an empty or non-numeric text ends the run.
            if (!gFPControl->Busy())
                result = gFPControl->WriteParam(number, Conv::ToInteger(edit->text()));
        } else if (Conv::IsNumeric(edit->text()) && !gFPControl->Busy()) {
            result = gFPControl->WriteParam(number, Conv::ToInteger(edit->text()));
        }
        ReportResult(result);
        programOk = result == 0;
    }
    if (!programOk)
        return;
    if (paramNumber == 12)
        settings->SetValueAtt(kParams, key(paramNumber), comboLarg->currentIndex());
    else
        settings->SetValueAtt(kParams, key(paramNumber), edit->text());
}

void InstallFlagForm::btnNext_Click()
{
    {
        WaitCursor hourglass;
        ReadFirmwareInfo();
        for (const FlagDef &f : Flags)
            ProgramFlags(f);
        for (int16_t n : ParamNumbers)
            ProgramFlags(n);
        HeaderPrinterFile::Close(*settings);
        if (programOk && chkImposta->isChecked())
            MsgBox::show(QStringLiteral("Programmazione flag avvenuta!"));
    }
    accept();
    if (StandaloneMode)
        return;
    // The customer's data of an earlier commissioning are gone: blank lines
    // until the next step fills them.
    gNome = BlankCustomerLine();
    gCdf = BlankCustomerLine();
    gQual = BlankCustomerLine();
    gSede = QStringList{BlankCustomerLine(), BlankCustomerLine()};
    InstallExtraModForm next(parentWidget());
    next.exec();
}
