// SPDX-License-Identifier: GPL-3.0-or-later
#include "XmlViewForm.h"

#include "ProgrammingFile.h"
#include "ProgrammingFileName.h"
#include "ProgrammingGridModel.h"
#include "GridView.h"
#include "RestoreProgramming.h"
#include "XmlViewPrinterRead.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "settings/ProgramFolder.h"
#include "ui/FileDialog.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

int16_t XmlViewForm::FormMode = 1;
QString XmlViewForm::XmlFile;

namespace {

// The least time between two drawings of the bar while a job runs.
constexpr qint64 kBarRedrawMs = 50;

// The hourglass for as long as the object lives, also when a run-time
// error leaves early.
struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QLabel *caption(const char *name, const QString &text, QWidget *parent)
{
    auto *label = named(new QLabel(text, parent), name);
    QFont f = label->font();
    f.setBold(true);
    label->setFont(f);
    return label;
}

} // namespace

XmlViewForm::XmlViewForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("XmlViewForm"));
    setWindowTitle(QStringLiteral("Dati Programmazione"));
    resize(760, 620);

    for (auto &model : m_models)
        model = new ProgrammingGridModel(this);
    auto view = [this](const char *name, int i) { return MakeGridView(name, m_models[size_t(i)], this); };

    auto *layout = new QVBoxLayout(this);
    lblRigaInt = caption("lblRigaInt", QStringLiteral("Programmazione Intestazione"), this);
    gridRigaInt = view("gridRigaInt", 0);
    gridRigaInt->setMaximumHeight(gridRigaInt->verticalHeader()->defaultSectionSize() * 7 + 8);
    layout->addWidget(lblRigaInt);
    layout->addWidget(gridRigaInt);

    SSTab1 = named(new QTabWidget(this), "SSTab1");
    auto tab = [this](const QString &title, std::initializer_list<std::pair<QLabel *, QTableView *>> grids) {
        auto *page = new QWidget(SSTab1);
        auto *box = new QVBoxLayout(page);
        for (const auto &[label, grid] : grids) {
            label->setParent(page);
            grid->setParent(page);
            box->addWidget(label);
            box->addWidget(grid, 1);
        }
        SSTab1->addTab(page, title);
    };
    gridIva = view("gridIva", 1);
    gridRep = view("gridRep", 2);
    gridCarteCredito = view("gridCarteCredito", 3);
    gridTicket = view("gridTicket", 4);
    gridFlag = view("gridFlag", 5);
    gridPS2 = view("gridPS2", 6);
    gridPromoTable = view("gridPromoTable", 7);
    gridContantiDesc = view("gridContantiDesc", 8);
    gridIva->setMaximumHeight(gridIva->verticalHeader()->defaultSectionSize() * 5 + 8);
    tab(QStringLiteral("IVA-REPARTI"),
        {{caption("lblIva", QStringLiteral("Programmazione IVA"), this), gridIva},
         {caption("lblRep", QStringLiteral("Programmazione Reparti"), this), gridRep}});
    tab(QStringLiteral("C.C. - TICKET"),
        {{caption("lblCarteCredito", QStringLiteral("Programmazione Carte di Credito"), this), gridCarteCredito},
         {caption("lblTicket", QStringLiteral("Programmazione Ticket"), this), gridTicket}});
    tab(QStringLiteral("FLAG - TASTIERA"),
        {{caption("lblFlag", QStringLiteral("Programmazione Flag"), this), gridFlag},
         {caption("lblPS2", QStringLiteral("Programmazione Tastiera"), this), gridPS2}});
    tab(QStringLiteral("PROMO TABLE"),
        {{caption("lblPromoTable", QStringLiteral("Programmazione PromoTable"), this), gridPromoTable}});
    tab(QStringLiteral("CONTANTI CON DESC"),
        {{caption("lblContantiDesc", QStringLiteral("Programmazione Contanti con descrizione"), this),
          gridContantiDesc}});
    layout->addWidget(SSTab1, 1);

    ProgressBar1 = named(new QProgressBar(this), "ProgressBar1");
    ProgressBar1->setTextVisible(false);
    // Shown only while a job runs; its room stays, so the grids do not jump.
    QSizePolicy barPolicy = ProgressBar1->sizePolicy();
    barPolicy.setRetainSizeWhenHidden(true);
    ProgressBar1->setSizePolicy(barPolicy);
    layout->addWidget(ProgressBar1);

    auto *buttons = new QHBoxLayout;
    btnPrgSave = named(new QPushButton(this), "btnPrgSave");
    btnOk = named(new QPushButton(QStringLiteral("CHIUDI"), this), "btnOk");
    buttons->addWidget(btnPrgSave);
    buttons->addStretch(1);
    buttons->addWidget(btnOk);
    layout->addLayout(buttons);

    connect(btnPrgSave, &QPushButton::clicked, this, &XmlViewForm::btnPrgSave_Click);
    connect(btnOk, &QPushButton::clicked, this, &XmlViewForm::btnOk_Click);

    // Load.
    {
        WaitCursor hourglass;
        if (FormMode != 2) {
            btnPrgSave->setText(QStringLiteral("Salva File"));
        } else {
            if (XmlFile != ProgrammingFileName::openPattern()) {
                const ProgrammingFileName::Location file = ProgrammingFileName::forOpen(XmlFile);
                xmlName = file.name;
                xmlFolder = file.folder;
            } else {
                // The pattern itself: the printer's own file beside the program.
                xmlName = QStringLiteral("KX90Prog") + GetMatricola();
                xmlFolder.clear();
            }
            btnPrgSave->setText(QStringLiteral("Riprogramma KX90"));
        }

        // Shown at once, so that the reading can be watched; modal already,
        // so that nothing else is started meanwhile.
        setWindowModality(Qt::ApplicationModal);
        show();
        btnPrgSave->setEnabled(false);
        m_working = true;
        SetupGrids();
        InitData();
        m_working = false;
        ProgressBar1->hide(); // the reading is over
        hide(); // the opener's exec() shows it again
        btnPrgSave->setEnabled(true);
    }
    if (m_closeAsked)
        QTimer::singleShot(0, this, &QDialog::accept);
}

XmlViewForm::~XmlViewForm() = default;

std::optional<QString> XmlViewForm::ChooseFileToOpen(QWidget *parent)
{
    return FileDialog::open(parent, QStringLiteral("Apri"),
                            ProgramFolder() + QLatin1Char('/') + ProgrammingFileName::openPattern(),
                            ProgrammingFileName::filter());
}

void XmlViewForm::SetupGrids()
{
    data.SetupGrids();
    ProgressBar1->setMinimum(0);
    ProgressBar1->setMaximum(SSTab1->count());
    ProgressBar1->setValue(0);
    showTables();
    QCoreApplication::processEvents();
    m_barDrawn.start();
}

void XmlViewForm::restartBar()
{
    ProgressBar1->show();
    ProgressBar1->setUpdatesEnabled(true);
    ProgressBar1->setValue(0);
    m_barDrawn.start();
}

// Drawing the bar costs about as much as a dozen exchanges with a printer on
// the network, or a whole table read from a file. So the value always moves
// at once, but the bar is drawn again only when kBarRedrawMs have passed
// since it last was: a slow printer still shows every step, a quick job is
// not held up by its own bar. The last step is drawn with the next turn of
// the events (the message that ends the job, or the opener's exec()).
void XmlViewForm::advance(int progress)
{
    const bool due = !m_barDrawn.isValid() || m_barDrawn.hasExpired(kBarRedrawMs);
    ProgressBar1->setUpdatesEnabled(due);
    ProgressBar1->setValue(progress);
    if (due) {
        QCoreApplication::processEvents();
        m_barDrawn.start();
    } else if (progress >= ProgressBar1->maximum()) {
        ProgressBar1->setUpdatesEnabled(true);
    }
}

std::array<const ProgrammingGrid *, 9> XmlViewForm::grids() const
{
    return {&data.gridRigaInt, &data.gridIva, &data.gridRep, &data.gridCarteCredito, &data.gridTicket,
            &data.gridFlag, &data.gridPS2, &data.gridPromoTable, &data.gridContantiDesc};
}

void XmlViewForm::showTables()
{
    const auto all = grids();
    for (size_t i = 0; i < all.size(); ++i)
        m_models[i]->fill([grid = all[i]](ProgrammingGrid &shown) { shown = *grid; });
}

void XmlViewForm::InitData()
{
    // The bar moves per tab while the tables come in; the grids, filled with
    // their redraw off, go on screen together at the end.
    fillData();
    showTables();
}

void XmlViewForm::fillData()
{
    namespace P = XmlViewPrinterRead;
    if (FormMode != 2) {
        data.flagRow = 1;
        // The clock as a probe: a printer that does not answer gets no further reads.
        int16_t result = gFPControl->ReadDateTime();
        if (result != 0) {
            ReportResult(result);
            return;
        }
        P::LoadIvaFromPrinter(data);
        P::LoadRepFromPrinter(data);
        advance(1);
        P::LoadCarteFromPrinter(data);
        P::LoadTicketFromPrinter(data);
        advance(2);
        P::LoadFlagFromPrinter(data);
        P::LoadIntFromPrinter(data);
        P::LoadLogoFromPrinter(data);
        P::LoadPS2FromPrinter(data);
        advance(3);
        P::LoadPromoFromPrinter(data);
        advance(4);
        P::LoadContantiFromPrinter(data);
        advance(5);
        return;
    }

    ProgrammingFile file(xmlName, xmlFolder);
    file.LoadIvaFromFile(data);
    file.LoadRepFromFile(data);
    advance(1);
    file.LoadCarteFromFile(data);
    file.LoadTicketFromFile(data);
    advance(2);
    file.LoadFlagFromFile(data);
    file.LoadIntFromFile(data);
    file.LoadLogoFromFile(data);
    file.LoadPS2FromFile(data);
    advance(3);
    file.LoadPromoFromFile(data);
    advance(4);
    file.LoadContantiFromFile(data);
    advance(5);
    if (!file.problem().isEmpty())
        MsgBox::show(file.problem(), QMessageBox::Ok, QMessageBox::Warning);
}

void XmlViewForm::btnPrgSave_Click()
{
    if (m_working)
        return;
    if (FormMode == 2)
        restoreToPrinter();
    else
        saveToFile();
}

void XmlViewForm::btnOk_Click()
{
    if (m_working) {
        // No cancel: the form closes when the work in hand is done.
        m_closeAsked = true;
        return;
    }
    accept();
}

void XmlViewForm::closeEvent(QCloseEvent *event)
{
    if (m_working) {
        m_closeAsked = true;
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void XmlViewForm::reject()
{
    if (m_working) {
        m_closeAsked = true;
        return;
    }
    QDialog::reject();
}

void XmlViewForm::setWorking(bool working)
{
    m_working = working;
    btnPrgSave->setEnabled(!working);
    if (!working)
        ProgressBar1->hide(); // a full bar would read as work still going on
    if (!working && m_closeAsked && isVisible())
        QTimer::singleShot(0, this, &QDialog::accept);
}

void XmlViewForm::saveToFile()
{
    WaitCursor hourglass;
    setWorking(true);
    const QString offered = ProgrammingFileName::offered(GetMatricola());
    // No question about an existing file: the save does not replace it but
    // writes the tables into it, keeping whatever else it holds.
    const std::optional<QString> chosen =
        FileDialog::save(this, QStringLiteral("Salva con nome"), ProgramFolder() + QLatin1Char('/') + offered,
                         ProgrammingFileName::filter(), FileDialog::Existing::Replace);
    if (!chosen) {
        MsgBox::show(QStringLiteral("Scrittura file annullata!"));
        setWorking(false);
        return;
    }
    const ProgrammingFileName::Location location = ProgrammingFileName::forSave(*chosen);
    xmlName = location.name;
    xmlFolder = location.folder;

    ProgrammingFile file(xmlName, xmlFolder);
    file.beginSave();
    restartBar();
    file.SaveVersionToFile();
    file.SaveIvaToFile(data);
    file.SaveRepToFile(data);
    advance(1);
    file.SaveCarteToFile(data);
    file.SaveTicketToFile(data);
    advance(2);
    file.SaveFlagToFile(data);
    file.SaveLogoToFile(data);
    file.SaveIntToFile(data);
    file.SavePS2ToFile(data);
    advance(3);
    file.SavePromoToFile(data);
    advance(4);
    file.SaveContantiToFile(data);
    advance(5);

    if (file.saveFailed()) {
        // Nothing half-written stays behind: the file goes back to what it was.
        const bool restored = file.rollBack();
        MsgBox::show(file.problem()
                         + (restored ? QStringLiteral("\r\nIl file è rimasto com'era.")
                                     : QStringLiteral("\r\nIl file potrebbe essere incompleto.")),
                     QMessageBox::Ok, QMessageBox::Critical);
    } else {
        MsgBox::show(QStringLiteral("Scrittura file terminata!"));
    }
    setWorking(false);
}

void XmlViewForm::restoreToPrinter()
{
    namespace R = RestoreProgramming;
    WaitCursor hourglass;
    setWorking(true);
    restartBar();
    // What each table gives back is not looked at: every table is tried.
    R::RestoreIva(data);
    R::RestoreRep(data);
    advance(1);
    R::RestoreCarte(data);
    R::RestoreTicket(data);
    advance(2);
    R::RestoreFlag(data);
    R::RestoreLogo(data);
    R::RestorePS2(data);
    advance(3);
    R::RestorePromo(data);
    advance(4);
    R::RestoreContanti(data);
    advance(5);

    // The header last, behind the closure that the printer may demand.
    bool headerAllowed = false;
    if (!gFPControl->Busy() && gFPControl->ReadClosureState(1) == 0) {
        const int32_t state = gFPControl->ClosureState();
        if (state > 1) {
            const auto answer = MsgBox::show(QStringLiteral("Per programmare la data bisogna fare una chiusura "
                                                            "fiscale. Procedo con la chiusura fiscale?"),
                                             QMessageBox::Yes | QMessageBox::No);
            if (answer == QMessageBox::Yes && !gFPControl->Busy()) {
                int16_t op = 1;
                headerAllowed = gFPControl->FiscalClosure(op) == 0;
            }
        } else {
            headerAllowed = state == 1;
        }
    }
    if (headerAllowed) {
        int16_t result = R::RestoreInt(data);
        ReportResult(result);
    }
    MsgBox::show(QStringLiteral("Programmazione stampante terminata!"));
    setWorking(false);
}
