// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstallHeaderForm.h"

#include "HeaderPrinterFile.h"
#include "InstallLogoForm.h"
#include "PreviewForm.h"

#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"
#include "settings/XmlSettings.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"
#include "settings/TrimBlanks.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

bool InstallHeaderForm::StandaloneMode = false;

namespace {

enum Content { RagioneSociale = 0, Indirizzo = 1, PartitaIva = 2, RigaGenerica = 3 };


QString blanks(int count)
{
    if (count < 0)
        throw RunTimeError::invalidArgument();
    return QString(count, QLatin1Char(' '));
}

// The hourglass while the printer works; back whichever way the work ends.
struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

const QString kSample[6] = {
    QStringLiteral("Kelvo Italia Spa"),       QStringLiteral("Via dei Tigli, 12/14"),
    QStringLiteral("00100 Borgo Nuovo (XX)"), QStringLiteral("P.Iva: 0123456789"),
    QStringLiteral("Tel: 01234567"),          QString(),
};

} // namespace

InstallHeaderForm::InstallHeaderForm(QWidget *parent) : QDialog(parent), settings(std::make_unique<XmlSettings>())
{
    setObjectName(QStringLiteral("InstallHeaderForm"));
    DialogKeys::ignoreEscape(this, !StandaloneMode);
    setWindowTitle(QStringLiteral("Intestazione"));

    const QStringList contents{QStringLiteral("Ragione sociale"), QStringLiteral("Indirizzo locale"),
                               QStringLiteral("Partita IVA"), QStringLiteral("Riga generica")};
    const QStringList styles{QStringLiteral("normale"), QStringLiteral("evidenziata"), QStringLiteral("doppia"),
                             QStringLiteral("doppia evidenziata")};

    Label1 = named(new QLabel(QStringLiteral("Contenuto riga"), this), "Label1");
    lblStileR = named(new QLabel(QStringLiteral("Stile riga"), this), "lblStileR");
    lblCampiObb = named(new QLabel(QStringLiteral("Obbligatori: ragione sociale, indirizzo del locale, P.iva."), this),
                        "lblCampiObb");
    lblR3 = named(new QLabel(QStringLiteral("P. Iva:"), this), "lblR3");
    lblMaxCar = named(new QLabel(this), "lblMaxCar");
    btnSample = named(new QPushButton(QStringLiteral("Esempio"), this), "btnSample");
    btnPrev = named(new QPushButton(QStringLiteral("Anteprima"), this), "btnPrev");
    btnNext = named(new QPushButton(QStringLiteral("AVANTI"), this), "btnNext");

    auto *grid = new QGridLayout;
    grid->addWidget(Label1, 0, 2);
    grid->addWidget(lblStileR, 0, 3);
    for (int i = 0; i < 6; ++i) {
        const QString n = QString::number(i + 1);
        txtR[i] = new QLineEdit(this);
        txtR[i]->setObjectName(QStringLiteral("txtR") + n);
        txtR[i]->setMinimumWidth(320);
        ComboContR[i] = new QComboBox(this);
        ComboContR[i]->setObjectName(QStringLiteral("ComboContR") + n);
        ComboContR[i]->addItems(contents);
        ComboContR[i]->setCurrentIndex(-1);
        comboTipoR[i] = new QComboBox(this);
        comboTipoR[i]->setObjectName(QStringLiteral("comboTipoR") + n);
        comboTipoR[i]->addItems(styles);
        comboTipoR[i]->setCurrentIndex(-1);
        checkCentraR[i] = new QCheckBox(QStringLiteral("Centrata"), this);
        checkCentraR[i]->setObjectName(QStringLiteral("checkCentraR") + n);
        if (i == 2)
            grid->addWidget(lblR3, i + 1, 0);
        grid->addWidget(txtR[i], i + 1, 1);
        grid->addWidget(ComboContR[i], i + 1, 2);
        grid->addWidget(comboTipoR[i], i + 1, 3);
        grid->addWidget(checkCentraR[i], i + 1, 4);
    }
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(btnSample);
    buttons->addWidget(btnPrev);
    buttons->addStretch();
    buttons->addWidget(btnNext);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(lblMaxCar);
    layout->addWidget(lblCampiObb);
    layout->addLayout(buttons);

    connect(btnSample, &QPushButton::clicked, this, &InstallHeaderForm::btnSample_Click);
    connect(btnPrev, &QPushButton::clicked, this, &InstallHeaderForm::btnPrev_Click);
    connect(btnNext, &QPushButton::clicked, this, &InstallHeaderForm::btnNext_Click);

    // Load
    gRagioneSociale = QStringList{QString()};
    gIndirizzo = QStringList{QString()};
    gSede = QStringList{QString()};
    if (StandaloneMode)
        btnNext->setText(QStringLiteral("APPLICA"));
    HeaderPrinterFile::Open(*settings);
    ReadFirmwareInfo();
    const int32_t model = GetPrinterModel();
    const bool wide = model == 1 || model == 2 || (model == 0 && gFwMajor >= 2);
    maxChars = wide ? 40 : 27;
    lblMaxCar->setText(QStringLiteral("Lunghezza massima riga %1 caratteri").arg(maxChars));
    // Printers of 27 characters are not read back, and get no defaults: the
    // form stays empty, with nothing chosen.
    if (wide)
        readBack();
}

InstallHeaderForm::~InstallHeaderForm() = default;

void InstallHeaderForm::readBack()
{
    bool allEmpty = true;
    for (int i = 0; i < 6; ++i) {
        int16_t n = int16_t(i + 1);
        QString text;
        int16_t style = 0;
        int16_t result = gFPControl->ReadHeaderLine(n);
        if (result == 0)
            text = TrimBlanks(gFPControl->HeaderLineText());
        else
            ReportResult(result);
        n = int16_t(i + 1);
        result = gFPControl->ReadHeaderStyle(n);
        if (result == 0)
            style = int16_t(gFPControl->HeaderStyle() - 1);
        else
            ReportResult(result);
        txtR[i]->setText(text);
        comboTipoR[i]->setCurrentIndex(style);
        checkCentraR[i]->setChecked(false); // the centring does not come back
        ComboContR[i]->setCurrentIndex(RigaGenerica);
        allEmpty = allEmpty && text.isEmpty();
    }
    if (allEmpty) {
        // A printer never programmed: a double, highlighted first line, the
        // others normal, all centred.
        comboTipoR[0]->setCurrentIndex(3);
        for (int i = 1; i < 6; ++i)
            comboTipoR[i]->setCurrentIndex(0);
        for (QCheckBox *box : checkCentraR)
            box->setChecked(true);
    }
}

QString InstallHeaderForm::CentredLine(const QString &s, int16_t m)
{
    if (s.size() >= m)
        return s.left(m);
    const QString t = TrimBlanks(s);
    const int16_t d = int16_t(m - t.size());
    const int16_t h = Conv::ToInteger(double(d) / 2.0); // halves to even
    const int16_t p = int16_t(h - 1);
    return blanks(p) + t + blanks(p);
}

void InstallHeaderForm::CollectFields()
{
    for (int i = 0; i < 6; ++i) {
        lineText[i] = txtR[i]->text();
        lineStyle[i] = int16_t(comboTipoR[i]->currentIndex());
        lineCentred[i] = checkCentraR[i]->isChecked() ? 1 : 0;
    }
}

bool InstallHeaderForm::CheckHeaderRows()
{
    bool company = false;
    bool address = false;
    bool vat = false;
    for (int i = 0; i < 6; ++i) {
        const QString text = txtR[i]->text();
        switch (ComboContR[i]->currentIndex()) {
        case RagioneSociale:
            company = true;
            ragioneSocialeLines.append(text);
            break;
        case Indirizzo:
            address = true;
            indirizzoLines.append(text);
            break;
        case PartitaIva:
            vat = true;
            gPartitaIva = text; // the last row so marked wins
            break;
        default:
            break;
        }
    }
    if (!company || !address || !vat) {
        MsgBox::show(QStringLiteral("Indicare Ragione sociale, indirizzo e partita iva!"));
        return false;
    }
    gRagioneSociale = ragioneSocialeLines;
    gIndirizzo = indirizzoLines;
    return true;
}

PreviewForm *InstallHeaderForm::preview()
{
    if (!previewForm)
        previewForm = std::make_unique<PreviewForm>(this);
    return previewForm.get();
}

void InstallHeaderForm::ShowPreviewLine(int index, const QString &text, int16_t style, int16_t centred)
{
    QTableWidget *grid = preview()->gridPreview;
    grid->setCurrentCell(index, 0);
    QTableWidgetItem *cell = grid->item(index, 0);
    cell->setText(text.left(maxChars));
    QFont font = grid->font();
    font.setPointSize(8);
    font.setBold(false);
    cell->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    switch (style) {
    case 1:
        font.setBold(true);
        break;
    case 2:
        font.setPointSize(14);
        break;
    case 3:
        font.setBold(true);
        font.setPointSize(14);
        break;
    default:
        break;
    }
    cell->setFont(font);
    if (centred != 0)
        cell->setTextAlignment(Qt::AlignCenter);
}

void InstallHeaderForm::showPreview()
{
    preview()->exec();
    previewForm.reset(); // "CHIUDI" unloads it
}

void InstallHeaderForm::btnSample_Click()
{
    for (int i = 0; i < 6; ++i)
        ShowPreviewLine(i, kSample[i], 0, 0);
    showPreview();
}

void InstallHeaderForm::btnPrev_Click()
{
    if (!CheckHeaderRows())
        return;
    CollectFields();
    for (int i = 0; i < 6; ++i)
        ShowPreviewLine(i, lineText[i], lineStyle[i], lineCentred[i]);
    showPreview();
}

void InstallHeaderForm::btnNext_Click()
{
    if (!CheckHeaderRows())
        return;
    {
        WaitCursor hourglass;
        btnNext->setEnabled(false);
        btnPrev->setEnabled(false);
        CollectFields();

        // Style before text, line by line. A refused text ends the lines;
        // the closing pseudo-lines still go.
        for (int i = 0; i < 6; ++i) {
            const auto n = int16_t(i + 1);
            bool centred = false;
            if (!gFPControl->Busy()) {
                gFPControl->WriteHeaderStyle(n, int16_t(lineStyle[i] + 1)); // a refused style is no matter
                centred = lineCentred[i] != 0;
            }
            int16_t result = 0;
            if (centred) {
                const QString text = CentredLine(lineText[i], maxChars);
                if (!gFPControl->Busy())
                    result = gFPControl->WriteHeaderLine(n, text);
            } else if (!gFPControl->Busy()) {
                result = gFPControl->WriteHeaderLine(n, TrimBlanks(lineText[i].left(maxChars)));
            }
            if (result != 0)
                break;
        }
        if (!gFPControl->Busy())
            gFPControl->WriteHeaderLine(98, QString());
        if (!gFPControl->Busy())
            gFPControl->WriteHeaderLine(99, QString());

        btnNext->setEnabled(true);
        btnPrev->setEnabled(true);
    }

    // The lines as typed, never the centred ones.
    for (int i = 0; i < 6; ++i)
        settings->SetValueAtt(QStringLiteral("InstallInt"), QStringLiteral("TipoR%1").arg(i + 1),
                              int(comboTipoR[i]->currentIndex()));
    for (int i = 0; i < 6; ++i)
        settings->SetValueAtt(QStringLiteral("InstallInt"), QStringLiteral("R%1").arg(i + 1), lineText[i]);
    for (int i = 0; i < 6; ++i)
        settings->SetValueAtt(QStringLiteral("InstallInt"), QStringLiteral("PosR%1").arg(i + 1), int(linePos[i]));
    HeaderPrinterFile::Close(*settings);

    accept();
    ragioneSocialeLines.clear();
    indirizzoLines.clear();
    if (StandaloneMode)
        return;
    InstallLogoForm::StandaloneMode = false;
    InstallLogoForm next(parentWidget());
    next.exec();
}
