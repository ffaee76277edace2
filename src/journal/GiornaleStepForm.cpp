// SPDX-License-Identifier: GPL-3.0-or-later
#include "GiornaleStepForm.h"

#include "app/FpMonitorForm.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "settings/ProgramFolder.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/StepLook.h"
#include "ui/ReportResult.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int LastTab = 5;

const QString kAvanti = QStringLiteral("AVANTI");
const QString kFine = QStringLiteral("FINE");

// The second step's instructions differ by model; index by GetPrinterModel.
struct RemovalTexts
{
    const char *rem;
    const char *rot;
};
const RemovalTexts kRemoval[] = {
    {"1) Rimuovere il coperchio di plastica posto sul retro della stampante",
     "2) Ruotare la manopola che impedisce la fuoriuscita della memoria MMC"},
    {"1) Rimuovere il coperchio di plastica posto sul retro della stampante",
     "2) Sollevare leggermente il fermo in plastica che impedisce la fuoriuscita della memoria MMC"},
    // The KX81's second line goes on with the first one's sentence.
    {"1) Sollevare leggermente il fermo in plastica posto sul retro della stampante",
     "   che impedisce la fuoriuscita della memoria MMC"},
};
const char *const kPull = "3) Spingere la memoria e rilasciarla fino ad ottenere l'espulsione della stessa.";

const char *const kModelFolder[] = {"KX90", "KX90II", "KX81"};

QLabel *title(QWidget *page, const QString &text, const char *name)
{
    auto *label = named(new QLabel(text, page), name);
    MakeStepHeading(label);
    return label;
}

QLabel *text(QWidget *page, const QString &value, const char *name)
{
    auto *label = named(new QLabel(value, page), name);
    label->setWordWrap(true);
    return label;
}

QLabel *picture(QWidget *page, const char *file, const char *name)
{
    auto *label = named(new QLabel(page), name);
    label->setAlignment(Qt::AlignCenter);
    label->setFixedSize(400, 300);
    label->setPixmap(QPixmap(QStringLiteral(":/journal/") + QLatin1String(file)));
    return label;
}

// A page with its title, its texts in a column and, when given, a picture
// beside them.
QWidget *page(QLabel *heading, const QList<QWidget *> &items, QLabel *pictureBox = nullptr)
{
    QWidget *p = heading->parentWidget();
    auto *texts = new QVBoxLayout;
    texts->addWidget(heading);
    texts->addSpacing(8);
    for (QWidget *w : items)
        texts->addWidget(w);
    texts->addStretch();
    auto *layout = new QHBoxLayout(p);
    layout->addLayout(texts, 1);
    if (pictureBox)
        layout->addWidget(pictureBox, 0, Qt::AlignTop);
    return p;
}

}

GiornaleStepForm::GiornaleStepForm(QWidget *parent)
    : QDialog(parent)
{
    Q_INIT_RESOURCE(JournalPictures); // the default pictures, inside the program
    setObjectName(QStringLiteral("GiornaleStepForm"));
    DialogKeys::ignoreEscape(this);
    setWindowTitle(QStringLiteral("Cambio Giornale di fondo"));

    SSTab1 = named(new QTabWidget(this), "SSTab1");
    btnBack = named(new QPushButton(QStringLiteral("INDIETRO"), this), "btnBack");
    btnFwd = named(new QPushButton(kAvanti, this), "btnFwd");

    auto *p1 = new QWidget;
    lblPrnOff = title(p1, QStringLiteral("Assicurarsi che la stampante sia spenta!"), "lblPrnOff");
    page(lblPrnOff, {});

    auto *p2 = new QWidget;
    lblPag2 = title(p2, QStringLiteral("ESTRAZIONE MEMORIA MMC"), "lblPag2");
    lblPag2_rem = text(p2, QLatin1String(kRemoval[0].rem), "lblPag2_rem");
    lblPag2_rot = text(p2, QLatin1String(kRemoval[0].rot), "lblPag2_rot");
    lblPag2_pull = text(p2, QString::fromUtf8(kPull), "lblPag2_pull");
    PictureEstrazioneDGFE = picture(p2, "Estrazione_DGFE.jpg", "PictureEstrazioneDGFE");
    page(lblPag2, {lblPag2_rem, lblPag2_rot, lblPag2_pull}, PictureEstrazioneDGFE);

    auto *p3 = new QWidget;
    lblPag3 = title(p3, QStringLiteral("CAMBIO MEMORIA MMC"), "lblPag3");
    lblPag3_rem = text(p3, QStringLiteral("1) Rimuovere la memoria esaurita verificando che siano riportati "
                                          "sull'etichetta la data di inizializzazione, la matricola del misuratore "
                                          "fiscale e il numero progressivo della memoria."),
                       "lblPag3_rem");
    lblPag3_prep = text(p3, QStringLiteral("2) Preparare la nuova memoria MMC applicando l'etichetta fornita a "
                                           "corredo e avendo cura di scrive la data, matricola del misuratore "
                                           "fiscale e il numero progressivo della memoria."),
                        "lblPag3_prep");
    lblPag3_NDGFE = text(p3, QStringLiteral("Numero DGFE da inserire:"), "lblPag3_NDGFE");
    lblDGFE = title(p3, QString(), "lblDGFE");
    PictureCambioDGFE = picture(p3, "Cambio_DGFE.jpg", "PictureCambioDGFE");
    page(lblPag3, {lblPag3_rem, lblPag3_prep, lblPag3_NDGFE, lblDGFE}, PictureCambioDGFE);

    auto *p4 = new QWidget;
    lblPag4 = title(p4, QStringLiteral("INSERIMENTO MEMORIA MMC"), "lblPag4");
    lblPag4_ins = text(p4, QStringLiteral("Inserire la memoria MMC, al posto della precedente, fino a sentire lo "
                                          "scatto del sistema di bloccaggio. Mettere la stampante in posizione di "
                                          "lavoro."),
                       "lblPag4_ins");
    PictureInserimentoDGFE = picture(p4, "Inserimento_DGFE.jpg", "PictureInserimentoDGFE");
    page(lblPag4, {lblPag4_ins}, PictureInserimentoDGFE);

    auto *p5 = new QWidget;
    lblPag5 = title(p5, QStringLiteral("ACCENSIONE STAMPANTE"), "lblPag5");
    lblPag5_NoSpegni = text(p5, QStringLiteral("In questa fase avviene il controllo della memoria, l'operazione può "
                                               "richiedere alcuni minuti, NON SPEGNERE LA STAMPANTE "),
                            "lblPag5_NoSpegni");
    lblPag5_OnPrn = text(p5, QStringLiteral("1) Accendere la stampante"), "lblPag5_OnPrn");
    lblPag5_Wait = text(p5, QStringLiteral("2) Verificare che sul visore sia comparsa la scritta ATTENDERE seguita "
                                           "dal messaggio DGFE DA FORMATTARE"),
                        "lblPag5_Wait");
    Label1 = text(p5, QStringLiteral("3) Attendere che sul visore compaia la scritta STATO REGISTRAZIONE"), "Label1");
    page(lblPag5, {lblPag5_NoSpegni, lblPag5_OnPrn, lblPag5_Wait, Label1});

    auto *p6 = new QWidget;
    lblPag6 = title(p6, QStringLiteral("FORMATTAZIONE MEMORIA"), "lblPag6");
    lblPag6_Format = text(p6, QStringLiteral("Eseguire la formattazione della MMC premendo il tasto sotto. Al "
                                             "termine della formattazione la stampante stampa uno scontrino "
                                             "riassuntivo da conservare assieme ai documenti della stampante. "),
                          "lblPag6_Format");
    btnFormat = named(new QPushButton(QStringLiteral("Formattazione memoria"), p6), "btnFormat");
    Label2 = text(p6, QStringLiteral("Numero DGFE attuale:"), "Label2");
    lblNewDgfe = title(p6, QString(), "lblNewDgfe");
    page(lblPag6, {lblPag6_Format, btnFormat, Label2, lblNewDgfe});

    int n = 0;
    for (QWidget *p : {p1, p2, p3, p4, p5, p6})
        SSTab1->addTab(p, QStringLiteral("Passo %1").arg(++n));

    QHBoxLayout *buttons = StepButtons(btnBack, btnFwd);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1, 1);
    layout->addLayout(buttons);

    connect(btnBack, &QPushButton::clicked, this, &GiornaleStepForm::btnBack_Click);
    connect(btnFwd, &QPushButton::clicked, this, &GiornaleStepForm::btnFwd_Click);
    connect(btnFormat, &QPushButton::clicked, this, &GiornaleStepForm::btnFormat_Click);
    m_shownTab = SSTab1->currentIndex();
    connect(SSTab1, &QTabWidget::currentChanged, this, &GiornaleStepForm::onCurrentChanged);

    // Load
    PrinterOffChecked = false;
    DgfeFormatted = false;
    if (!gFPControl->Busy()) {
        // Silent when it fails: the number stays empty and the wizard goes on.
        if (gFPControl->ReadDgfeStatus(1) == 0)
            lblDGFE->setText(QString::number(gFPControl->DgfeNumber() + 1));
        const int32_t model = GetPrinterModel();
        setStepTexts(model);
        loadPictures(model);
    }
    StepRefused = false;
    TabClickIgnored = SSTab1->currentIndex() != 0;
    SSTab1->setCurrentIndex(0);
    btnBack->setEnabled(false);
}

void GiornaleStepForm::setStepTexts(int32_t model)
{
    const RemovalTexts &t = kRemoval[model >= 0 && model <= 2 ? model : 0];
    lblPag2_rem->setText(QLatin1String(t.rem));
    lblPag2_rot->setText(QLatin1String(t.rot));
    lblPag2_pull->setText(QString::fromUtf8(kPull));
}

void GiornaleStepForm::loadPictures(int32_t model)
{
    const QDir folder(QDir(ProgramFolder()).filePath(
        QStringLiteral("img/") + QLatin1String(kModelFolder[model >= 0 && model <= 2 ? model : 0])));
    const std::pair<QLabel *, const char *> boxes[] = {{PictureEstrazioneDGFE, "Estrazione_DGFE.jpg"},
                                                       {PictureCambioDGFE, "Cambio_DGFE.jpg"},
                                                       {PictureInserimentoDGFE, "Inserimento_DGFE.jpg"}};
    for (const auto &[box, file] : boxes) {
        // A missing or unreadable file leaves the box as it is.
        // Scaled to the box's screen pixels, not its logical ones, so that
        // the picture stays sharp on a scaled screen.
        QPixmap pixmap;
        if (pixmap.load(folder.filePath(QLatin1String(file)))) {
            const qreal dpr = box->devicePixelRatioF();
            QPixmap fitted = pixmap.scaled(box->size() * dpr, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            fitted.setDevicePixelRatio(dpr);
            box->setPixmap(fitted);
        }
    }
}

// --- Moving between steps ---------------------------------------------------------

void GiornaleStepForm::btnBack_Click()
{
    if (SSTab1->currentIndex() >= 1)
        SSTab1->setCurrentIndex(SSTab1->currentIndex() - 1);
}

void GiornaleStepForm::btnFwd_Click()
{
    if (btnFwd->text() == kFine) {
        accept();
        return;
    }
    if (SSTab1->currentIndex() < LastTab)
        SSTab1->setCurrentIndex(SSTab1->currentIndex() + 1);
}

void GiornaleStepForm::onCurrentChanged(int tab)
{
    const int previous = m_shownTab;
    m_shownTab = tab;
    SSTab1_Click(previous);
}

void GiornaleStepForm::SSTab1_Click(int previous)
{
    const int tab = SSTab1->currentIndex();
    if (TabClickIgnored) {
        TabClickIgnored = false;
        return;
    }

    btnBack->setEnabled(tab != 0);
    btnFwd->setEnabled(true);
    btnFwd->setText(tab == LastTab ? kFine : kAvanti);

    if (StepRefused) {
        // The event of our own move back: the buttons are set, nothing more.
        StepRefused = false;
    } else {
        StepRefused = qAbs(tab - previous) >= 2;
        if (tab < 4 && previous == 0 && !PrinterOffChecked) {
            // Off means: no answer at all. Anything else, a busy control
            // included, counts as a printer still on.
            int16_t probe = 0;
            if (!gFPControl->Busy())
                probe = gFPControl->ReadDateTime();
            if (probe == 1) {
                PrinterOffChecked = true;
            } else {
                MsgBox::show(QStringLiteral("Spegni la stampante!"));
                StepRefused = true;
                SSTab1->setCurrentIndex(previous); // clears StepRefused in its own event
            }
        } else if (previous == 4 && !DgfeFormatted) {
            btnFwd->setEnabled(false);
        }
    }

    if (StepRefused) {
        MsgBox::show(QStringLiteral("Puoi avanzare un passo alla volta"));
        StepRefused = true;
        SSTab1->setCurrentIndex(previous);
    }
}

// --- Format -----------------------------------------------------------------------------

void GiornaleStepForm::btnFormat_Click()
{
    // With the control busy nothing is sent, and the step counts as done.
    int16_t result = 0;
    if (!gFPControl->Busy())
        result = gFPControl->FormatDgfe(1);
    if (result != 0) {
        ReportResult(result);
        return;
    }
    if (!gFPControl->Busy() && gFPControl->ReadDgfeStatus(1) == 0)
        lblNewDgfe->setText(QString::number(gFPControl->DgfeNumber()));
    FpMonitorForm monitor(this);
    monitor.exec();
    btnFwd->setEnabled(true);
    DgfeFormatted = true;
}
