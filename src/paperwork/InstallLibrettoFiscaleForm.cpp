// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstallLibrettoFiscaleForm.h"

#include "LibrettoSheet.h"
#include "PrintFoglioForm.h"
#include "SystemPrinters.h"

#include "printer/KelvoFPControl.h"
#include "printer/SharedState.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

bool InstallLibrettoFiscaleForm::SampleMode = false;

namespace {

QString twoDigits(int value)
{
    return QString::number(value).rightJustified(2, QLatin1Char('0'));
}

// The lines in capitals and trimmed, on one line with a blank between them.
QString oneLine(const QStringList &lines)
{
    QStringList out;
    for (const QString &line : lines)
        out.append(line.toUpper().trimmed());
    return out.join(QLatin1Char(' '));
}

}

InstallLibrettoFiscaleForm::InstallLibrettoFiscaleForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("InstallLibrettoFiscaleForm"));
    // A step of the commissioning, or of the decommissioning in SampleMode.
    DialogKeys::ignoreEscape(this);
    setWindowTitle(QStringLiteral("Compilazione libretto fiscale"));

    m_printed = named(new QWidget(this), "frmStampa");
    lblTitolo = named(new QLabel(QStringLiteral("Istruzioni per la compilazione del libretto fiscale"), m_printed),
                      "lblTitolo");
    QFont bold = lblTitolo->font();
    bold.setBold(true);
    bold.setPointSize(bold.pointSize() + 2);
    lblTitolo->setFont(bold);
    frmLibretto = new LibrettoSheet(m_printed);
    auto *printedLayout = new QVBoxLayout(m_printed);
    printedLayout->addWidget(lblTitolo);
    printedLayout->addWidget(frmLibretto);

    Image1 = frmLibretto->Image1;
    lblRagSocUte = frmLibretto->lblRagSocUte;
    lblIndFisc = frmLibretto->lblIndFisc;
    lblPIva = frmLibretto->lblPIva;
    lblDataInst = frmLibretto->lblDataInst;
    lblAzzera = frmLibretto->lblAzzera;
    lblQualif = frmLibretto->lblQualif;
    lblRagSoc2 = frmLibretto->lblRagSoc2;
    lblFirma = frmLibretto->lblFirma;

    btnPrint = named(new QPushButton(QStringLiteral("Stampa promemoria"), this), "btnPrint");
    btnOK = named(new QPushButton(QStringLiteral("AVANTI"), this), "btnOK");
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnPrint);
    buttons->addWidget(btnOK);
    // The page scrolls where the screen is too small for it (a laptop at
    // 150 %): the buttons below it stay in sight.
    auto *scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(m_printed);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addLayout(buttons);
    // As large as the page, up to a 1280x720 desktop less its title bar and panel.
    const QMargins margins = layout->contentsMargins();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize whole(m_printed->sizeHint().width() + margins.left() + margins.right() + bar,
                      m_printed->sizeHint().height() + buttons->sizeHint().height() + layout->spacing() + margins.top()
                          + margins.bottom());
    resize(whole.boundedTo(QSize(1280, 650)));

    connect(btnPrint, &QPushButton::clicked, this, &InstallLibrettoFiscaleForm::btnPrint_Click);
    connect(btnOK, &QPushButton::clicked, this, &InstallLibrettoFiscaleForm::btnOK_Click);

    // Load: what the printer says, then the customer's data.
    if (!gFPControl->Busy())
        gFPControl->ReadAzzeramenti();
    lblAzzera->setText(QString::number(gFPControl->Azzeramenti()));
    if (!gFPControl->Busy())
        gFPControl->ReadDateTime();
    lblDataInst->setText(twoDigits(gFPControl->DateDay()) + QLatin1Char('/') + twoDigits(gFPControl->DateMonth())
                         + QLatin1Char('/') + twoDigits(gFPControl->DateYear()));
    lblPIva->setText(gPartitaIva.toUpper().trimmed());
    lblRagSocUte->setText(oneLine(gRagioneSociale));
    lblIndFisc->setText(oneLine(gSede));
    lblRagSoc2->setText(lblRagSocUte->text());
    lblQualif->setText(gQual);
    lblFirma->setText(gNome);
}

void InstallLibrettoFiscaleForm::btnOK_Click()
{
    accept();
    if (SampleMode)
        return;
    PrintFoglioForm::PrintMode = 1;
    PrintFoglioForm next(parentWidget());
    next.exec();
}

void InstallLibrettoFiscaleForm::btnPrint_Click()
{
    bool chosen = false;
    {
        PrintFoglioForm::PrintMode = 3;
        PrintFoglioForm choice(this);
        choice.exec();
        chosen = choice.PrinterChosen;
    }
    if (!SystemPrinters::anyPrinter() || !chosen)
        return;
    QWidget *printed = m_printed;
    const auto outcome = SystemPrinters::print(
        this, SystemPrinters::current(), 0, QStringLiteral("Promemoria_libretto_fiscale.pdf"),
        [printed](QPainter &painter, const QRectF &page, const std::function<bool()> &) {
            // The screen's image, as large as the page's width allows.
            const QSizeF size = printed->size();
            const double scale = std::min(page.width() / size.width(), page.height() / size.height());
            painter.save();
            painter.translate(page.topLeft());
            painter.scale(scale, scale);
            printed->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
            painter.restore();
        });
    if (outcome.status == SystemPrinters::Outcome::Status::Failed)
        MsgBox::show(outcome.message, QMessageBox::Ok, QMessageBox::Warning);
}
