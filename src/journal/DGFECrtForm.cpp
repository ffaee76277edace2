// SPDX-License-Identifier: GPL-3.0-or-later
#include "DGFECrtForm.h"

#include "JournalDates.h"
#include "JournalFile.h"

#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "settings/Conversions.h"
#include "settings/ProgramFolder.h"
#include "settings/RunTimeError.h"
#include "ui/FileDialog.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

bool DGFECrtForm::ByNumber = false;
QString DGFECrtForm::FirstReceipt;
QString DGFECrtForm::LastReceipt;
QPointer<QDateEdit> DGFECrtForm::ReceiptDate;
QPointer<QDateEdit> DGFECrtForm::FromDate;
QPointer<QDateEdit> DGFECrtForm::ToDate;

namespace {
const QString kPausa = QStringLiteral("PAUSA");
const QString kRiprendi = QStringLiteral("RIPRENDI");

// A receipt number given as text that cannot be sent: thrown by the read
// call, caught by the read, which ends there with the list as it stands.
struct BadReceiptNumber
{
};
}

DGFECrtForm::DGFECrtForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("DGFECrtForm"));
    setWindowTitle(QStringLiteral("DGFE"));

    lblDataIni = named(new QLabel(QStringLiteral("Data iniziale:"), this), "lblDataIni");
    lblDataIni2 = named(new QLabel(this), "lblDataIni2");
    lblDataFin = named(new QLabel(QStringLiteral("Data finale:"), this), "lblDataFin");
    lblDataFin2 = named(new QLabel(this), "lblDataFin2");
    lblScontFin = named(new QLabel(QStringLiteral("Scontrino finale:"), this), "lblScontFin");
    lblScontFin2 = named(new QLabel(this), "lblScontFin2");

    ListDGFE = named(new QListWidget(this), "ListDGFE");
    // The printer lays its lines out in columns: a fixed pitch keeps them.
    QFont courier(QStringLiteral("Courier New"));
    courier.setStyleHint(QFont::TypeWriter);
    courier.setFixedPitch(true);
    ListDGFE->setFont(courier);
    // One height for all rows: adding the ten-thousandth line costs what the
    // first did.
    ListDGFE->setUniformItemSizes(true);
    ListDGFE->setSelectionMode(QAbstractItemView::SingleSelection);
    ListDGFE->setMinimumSize(QFontMetrics(courier).horizontalAdvance(QString(48, QLatin1Char('M'))), 360);

    Command1 = named(new QPushButton(QStringLiteral("INIZIO"), this), "Command1");
    CmdPausa = named(new QPushButton(kPausa, this), "CmdPausa");
    CmdStop = named(new QPushButton(QStringLiteral("STOP"), this), "CmdStop");
    btnSalvaSuFile = named(new QPushButton(QStringLiteral("SALVA SU FILE"), this), "btnSalvaSuFile");
    btnOk = named(new QPushButton(QStringLiteral("CHIUDI"), this), "btnOk");

    auto *selection = new QGridLayout;
    selection->addWidget(lblDataIni, 0, 0);
    selection->addWidget(lblDataIni2, 0, 1);
    selection->addWidget(lblDataFin, 1, 0);
    selection->addWidget(lblDataFin2, 1, 1);
    selection->addWidget(lblScontFin, 2, 0);
    selection->addWidget(lblScontFin2, 2, 1);
    selection->setColumnStretch(1, 1);
    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : {Command1, CmdPausa, CmdStop, btnSalvaSuFile})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(btnOk);
    auto *body = new QHBoxLayout;
    body->addWidget(ListDGFE, 1);
    body->addLayout(buttons);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(selection);
    layout->addLayout(body, 1);

    connect(Command1, &QPushButton::clicked, this, &DGFECrtForm::Command1_Click);
    connect(CmdPausa, &QPushButton::clicked, this, &DGFECrtForm::CmdPausa_Click);
    connect(CmdStop, &QPushButton::clicked, this, &DGFECrtForm::CmdStop_Click);
    connect(btnSalvaSuFile, &QPushButton::clicked, this, &DGFECrtForm::btnSalvaSuFile_Click);
    connect(btnOk, &QPushButton::clicked, this, &QWidget::close);

    // Load
    if (ByNumber) {
        lblDataIni->setText(QStringLiteral("Scontrino iniziale:"));
        lblDataIni2->setText(FirstReceipt);
        lblDataFin->setText(QStringLiteral("Scontrino finale:"));
        lblDataFin2->setText(LastReceipt);
        lblScontFin->setText(QStringLiteral("Data:"));
        lblScontFin2->setText(JournalDates::text(ReceiptDate));
    } else {
        lblDataIni2->setText(JournalDates::text(FromDate));
        lblDataFin2->setText(JournalDates::text(ToDate));
        lblScontFin->setText(QString());
    }
    ReadEnded = false;
    CmdPausa->setEnabled(false);
    CmdStop->setEnabled(false);
    btnSalvaSuFile->setEnabled(false);
    btnOk->setEnabled(true);
}

// --- Reading -------------------------------------------------------------------

void DGFECrtForm::Command1_Click()
{
    ListDGFE->clear();
    m_pending.clear();
    m_listShown.invalidate();
    ReadEnded = false;
    ReadPaused = false;
    btnOk->setEnabled(false);
    CmdPausaTag = kPausa; // the caption stays as it is
    CmdPausa->setEnabled(true);
    CmdStop->setEnabled(true);
    btnSalvaSuFile->setEnabled(false);

    setCursor(Qt::WaitCursor);
    try {
        // A pause holds a read by date only: in a read by number just the
        // caption changes and the read goes on.
        ReadSelection(!ByNumber);
    } catch (const BadReceiptNumber &) {
        // Nothing was asked of the printer with that number; the list keeps
        // what the read brought so far.
        ReportBadReceiptNumber(FirstReceipt, LastReceipt);
    }
    unsetCursor();
    showLatestLines();

    btnOk->setEnabled(true);
    CmdPausa->setEnabled(false);
    CmdStop->setEnabled(false);
    ReadEnded = true;
    btnSalvaSuFile->setEnabled(true);
}

void DGFECrtForm::ReadSelection(bool pauseHolds)
{
    ReadResult = 0;
    if (gFPControl->Busy())
        return;
    ReadResult = readCall(true);
    ReportResult(int16_t(ReadResult));
    if (ReadResult == 0 && gFPControl->InfoCode() == EndOfSelection) {
        // An empty selection: told by the code alone, whatever the line holds.
        addLine(QStringLiteral("Nessuna operazione!"));
        return;
    }
    while (ReadResult == 0 && gFPControl->InfoCode() != EndOfSelection && !ReadEnded) {
        giveEventTurn();
        if (pauseHolds && ReadPaused)
            continue;
        addLine(gFPControl->DgfeLine());
        if (gFPControl->Busy())
            continue; // the same line comes again at the next turn
        ReadResult = readCall(false);
        ReportResult(int16_t(ReadResult));
    }
    // The last line fetched: the end line, or the one fetched before a stop.
    addLine(gFPControl->DgfeLine());
}

int16_t DGFECrtForm::readCall(bool first)
{
    gFPControl->setTimeoutOp(30);
    if (!ByNumber) {
        const JournalDates::Parts from = JournalDates::parts(FromDate);
        const JournalDates::Parts to = JournalDates::parts(ToDate);
        return gFPControl->ReadDgfeByDate(1, from.day, from.month, from.year, to.day, to.month, to.year, first);
    }
    int16_t firstReceipt = 0;
    int16_t lastReceipt = 0;
    try {
        firstReceipt = Conv::ToInteger(FirstReceipt);
        lastReceipt = Conv::ToInteger(LastReceipt);
    } catch (const RunTimeError &) {
        throw BadReceiptNumber{};
    }
    const JournalDates::Parts day = JournalDates::parts(ReceiptDate);
    return gFPControl->ReadDgfeByNumber(1, day.day, day.month, day.year, firstReceipt, lastReceipt, first);
}

void DGFECrtForm::addLine(const QString &line)
{
    // The list follows the read, selecting its new last entry. A list view
    // lays out all its rows again for every insertion, so one row at a time
    // would make each line cost more than the last. While the lines stream
    // in they are handed to the list together, at most every ListRefreshMs
    // (ten times a second still reads as a list that flows); a slow
    // printer's lines go in one by one. A pause, a stop and the end show
    // every line at once.
    m_pending.append(line);
    if (!m_listShown.isValid() || m_listShown.hasExpired(ListRefreshMs))
        showLatestLines();
}

void DGFECrtForm::showLatestLines()
{
    if (!m_pending.isEmpty()) {
        ListDGFE->addItems(m_pending);
        m_pending.clear();
    }
    ListDGFE->setCurrentRow(ListDGFE->count() - 1);
    m_listShown.start();
}

int DGFECrtForm::lineCount() const
{
    return int(ListDGFE->count() + m_pending.size());
}

QStringList DGFECrtForm::lines() const
{
    QStringList out;
    out.reserve(lineCount());
    for (int i = 0; i < ListDGFE->count(); ++i)
        out << ListDGFE->item(i)->text();
    return out + m_pending;
}

void DGFECrtForm::giveEventTurn()
{
    if (onReadTurn)
        onReadTurn();
    if (ReadPaused && !ByNumber) {
        showLatestLines();
        // A paused read waits for the next event (a click, a repaint) rather
        // than spinning: the screen stays as alive and the processor idle.
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return;
    }
    QCoreApplication::processEvents();
}

void DGFECrtForm::ReportBadReceiptNumber(const QString &first, const QString &last)
{
    // Name the one of the two that does not convert.
    QString shown = first;
    try {
        Conv::ToInteger(first);
        shown = last;
    } catch (const RunTimeError &) {
    }
    MsgBox::show(QStringLiteral("Numero scontrino non valido: \"%1\"\nInserire un numero da 1 a 32767.").arg(shown),
                 QMessageBox::Ok, QMessageBox::Warning);
}

void DGFECrtForm::CmdPausa_Click()
{
    if (CmdPausaTag == kPausa) {
        CmdPausaTag = kRiprendi;
        CmdPausa->setText(kRiprendi);
    } else {
        CmdPausaTag = kPausa;
        CmdPausa->setText(kPausa);
    }
    ReadPaused = !ReadPaused;
}

void DGFECrtForm::CmdStop_Click()
{
    ReadEnded = true;
}

// --- Saving ----------------------------------------------------------------------

void DGFECrtForm::btnSalvaSuFile_Click()
{
    const QString proposed =
        QDir(ProgramFolder()).filePath(QStringLiteral("DGFE_") + GetMatricola() + QStringLiteral(".log"));
    // An existing file is started anew without a question.
    const std::optional<QString> chosen = FileDialog::save(this, QStringLiteral("Salva su file"), proposed,
                                                           QStringLiteral("*.log"), FileDialog::Existing::Replace);
    if (!chosen || chosen->isEmpty())
        return;

    QStringList lines{QStringLiteral("DISPOSITIVO GIORNALE DI FONDO ELETTRONICO"), QStringLiteral(" ")};
    if (ByNumber)
        lines << QStringLiteral("DATA ") + lblScontFin2->text() + QStringLiteral("  DA Sc.  ") + lblDataIni2->text()
                     + QStringLiteral("   A Sc.  ") + lblDataFin2->text();
    else
        lines << QStringLiteral("DAL ") + lblDataIni2->text() + QStringLiteral("   AL ") + lblDataFin2->text();
    lines << QStringLiteral(" ");
    lines << this->lines();

    // A file of that name is replaced without a question.
    QString error;
    if (!JournalFile::write(*chosen, lines, &error)) {
        MsgBox::show(QStringLiteral("Impossibile salvare il file %1\n%2").arg(QDir::toNativeSeparators(*chosen), error),
                     QMessageBox::Ok, QMessageBox::Critical);
        return;
    }
    MsgBox::show(QStringLiteral("Salvataggio su file eseguito"), QMessageBox::Ok, QMessageBox::Information,
                 MsgBox::applicationTitle());
}

// --- Closing -----------------------------------------------------------------------

bool DGFECrtForm::closeRequest()
{
    if (ReadEnded)
        return true;
    const auto answer = MsgBox::show(
        QStringLiteral("Visualizzazione non ancora terminata! Vuoi terminare la visualizzazione ed uscire?"),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::NoIcon, MsgBox::applicationTitle());
    if (answer != QMessageBox::Yes)
        return false;
    // The read ends at its next turn; the screen closes at a second "CHIUDI".
    ReadEnded = true;
    btnOk->setEnabled(true);
    MsgBox::show(QStringLiteral("Premere CHIUDI per uscire!"), QMessageBox::Ok, QMessageBox::Information,
                 MsgBox::applicationTitle());
    return false;
}

void DGFECrtForm::closeEvent(QCloseEvent *event)
{
    if (!closeRequest()) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event); // through reject(), which now finds ReadEnded
}

void DGFECrtForm::reject()
{
    if (closeRequest())
        QDialog::reject();
}
