// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintFoglioForm.h"

#include "DeclarationPage.h"
#include "SystemPrinters.h"

#include "printer/PrinterIdentity.h"
#include "settings/Conversions.h"
#include "settings/ProgramFolder.h"
#include "settings/RunTimeError.h"
#include "ui/DialogKeys.h"
#include "ui/FileDialog.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSaveFile>
#include <optional>

int16_t PrintFoglioForm::PrintMode = 1;

namespace {
// The hourglass for as long as the page is being made, whatever happens.
struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};
}

PrintFoglioForm::PrintFoglioForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PrintFoglioForm"));
    // The declaration ends the commissioning (1) or the decommissioning (2).
    DialogKeys::ignoreEscape(this, PrintMode != 3);
    setWindowTitle(QStringLiteral("Ufficio Entrate"));

    lblSelPrn = named(new QLabel(QStringLiteral("Selezionare la stampante (A4)"), this), "lblSelPrn");
    comboPrn = named(new QComboBox(this), "comboPrn");
    comboPrn->setMinimumWidth(260);
    lblNCopie = named(new QLabel(QStringLiteral("Numero copie:"), this), "lblNCopie");
    txtNCopie = named(new QLineEdit(this), "txtNCopie");
    btnPrint = named(new QPushButton(QStringLiteral("Stampa su carta"), this), "btnPrint");
    btnPrintFile = named(new QPushButton(QStringLiteral("Stampa su file"), this), "btnPrintFile");
    btnOK = named(new QPushButton(QStringLiteral("FINE"), this), "btnOK");

    auto *grid = new QGridLayout(this);
    grid->addWidget(lblSelPrn, 0, 0, 1, 3);
    grid->addWidget(comboPrn, 1, 0, 1, 3);
    grid->addWidget(lblNCopie, 2, 0);
    grid->addWidget(txtNCopie, 2, 1);
    grid->addWidget(btnPrint, 3, 0);
    grid->addWidget(btnPrintFile, 3, 1);
    grid->addWidget(btnOK, 3, 2);

    connect(btnPrint, &QPushButton::clicked, this, &PrintFoglioForm::btnPrint_Click);
    connect(btnPrintFile, &QPushButton::clicked, this, &PrintFoglioForm::btnPrintFile_Click);
    connect(btnOK, &QPushButton::clicked, this, &PrintFoglioForm::btnOK_Click);

    // Load
    PrintToFile = false;
    PrinterChosen = false;
    FillPrinters();
    connect(comboPrn, &QComboBox::currentIndexChanged, this, &PrintFoglioForm::comboPrn_Click);
    switch (PrintMode) {
    case 1:
        txtNCopie->setText(QStringLiteral("1"));
        btnOK->setText(QStringLiteral("Messa in servizio terminata"));
        break;
    case 2:
        txtNCopie->setText(QStringLiteral("2"));
        break;
    case 3:
        // Only the choice of a printer: the button takes the row of the
        // copies and the form shrinks to the list and the button.
        lblNCopie->hide();
        txtNCopie->hide();
        btnPrint->hide();
        btnPrintFile->hide();
        grid->removeWidget(btnOK);
        grid->addWidget(btnOK, 2, 2);
        btnOK->setText(QStringLiteral("APPLICA"));
        btnOK->setEnabled(true);
        break;
    default:
        break;
    }
    adjustSize();
}

void PrintFoglioForm::FillPrinters()
{
    comboPrn->clear();
    comboPrn->addItems(SystemPrinters::a4Devices());
    // "PDF" is always in the list, so there is always a device to print on.
    if (comboPrn->count() > 0 && SystemPrinters::anyPrinter()) {
        comboPrn->setCurrentIndex(0);
        SystemPrinters::setCurrent(comboPrn->currentText());
    } else {
        btnPrint->setEnabled(false);
    }
}

void PrintFoglioForm::comboPrn_Click()
{
    SystemPrinters::setCurrent(comboPrn->currentText());
}

void PrintFoglioForm::btnOK_Click()
{
    PrinterChosen = true;
    accept();
}

void PrintFoglioForm::closeEvent(QCloseEvent *event)
{
    if (!btnOK->isEnabled()) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void PrintFoglioForm::reject()
{
    if (btnOK->isEnabled())
        QDialog::reject();
}

void PrintFoglioForm::btnPrintFile_Click()
{
    const QString proposed = DeclarationPage::proposedName(PrintMode, GetMatricola(), QStringLiteral(".txt"));
    // A cancel keeps the name that stood in the dialog: the file is written
    // all the same, beside the program. An existing file is replaced without
    // a question.
    const std::optional<QString> chosen =
        FileDialog::save(this, QStringLiteral("Stampa su file"), proposed, QStringLiteral("File di testo (*.txt)"),
                         FileDialog::Existing::Replace);
    OutputFileName = chosen ? *chosen : QDir(ProgramFolder()).filePath(proposed);
    PrintToFile = true;
    composePage();
}

void PrintFoglioForm::btnPrint_Click()
{
    composePage();
}

int PrintFoglioForm::copiesAsked() const
{
    // A number of copies that is no number is let go: the printer's own stands.
    const QString text = txtNCopie->text().trimmed();
    if (!Conv::IsNumeric(text))
        return 0;
    try {
        return std::max(0, int(Conv::ToLong(text)));
    } catch (const RunTimeError &) {
        return 0;
    }
}

void PrintFoglioForm::composePage()
{
    {
        WaitCursor wait;
        const DeclarationData data = DeclarationData::read(PrintMode);
        const QList<PageStep> steps = DeclarationPage::compose(data);
        if (PrintToFile) {
            // An existing file is replaced without a question, and only by a
            // whole one.
            const QString shown = QDir::toNativeSeparators(OutputFileName);
            QSaveFile file(OutputFileName);
            if (!file.open(QIODevice::WriteOnly))
                throw RunTimeError::pathFileAccess(shown, file.errorString());
            const QByteArray bytes = DeclarationPage::textFile(steps);
            if (file.write(bytes) != bytes.size() || !file.commit())
                throw RunTimeError::pathFileAccess(shown, file.errorString());
        } else {
            const auto outcome = SystemPrinters::print(
                this, SystemPrinters::current(), copiesAsked(),
                DeclarationPage::proposedName(PrintMode, data.matricola, QStringLiteral(".pdf")),
                [&steps](QPainter &painter, const QRectF &page, const std::function<bool()> &newPage) {
                    DeclarationPage::drawOnPaper(steps, painter, page, newPage);
                });
            if (outcome.status == SystemPrinters::Outcome::Status::Sent)
                MsgBox::show(QStringLiteral("Stampa in corso... verificare che non ci siano problemi."));
            else if (outcome.status == SystemPrinters::Outcome::Status::Failed)
                MsgBox::show(outcome.message, QMessageBox::Ok, QMessageBox::Warning);
        }
    }
    btnOK->setEnabled(true);
}
