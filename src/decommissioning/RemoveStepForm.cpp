// SPDX-License-Identifier: GPL-3.0-or-later
#include "RemoveStepForm.h"

#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"

#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/StepLook.h"
#include "ui/ReportResult.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QLabel *title(QWidget *page, const char *name, const QString &text)
{
    auto *label = named(new QLabel(text, page), name);
    MakeStepHeading(label);
    return label;
}

QLabel *body(QWidget *page, const char *name, const QString &text)
{
    auto *label = named(new QLabel(text, page), name);
    label->setWordWrap(true);
    return label;
}

}

RemoveStepForm::RemoveStepForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("RemoveStepForm"));
    DialogKeys::ignoreEscape(this);
    setWindowTitle(QStringLiteral("Disintallazione"));

    SSTab1 = named(new QTabWidget(this), "SSTab1");
    QWidget *pages[7];
    QVBoxLayout *layouts[7];
    for (int i = 0; i < 7; ++i) {
        pages[i] = new QWidget(SSTab1);
        layouts[i] = new QVBoxLayout(pages[i]);
        SSTab1->addTab(pages[i], QStringLiteral("Passo %1").arg(i + 1));
    }

    layouts[0]->addWidget(title(pages[0], "lblPag1", QStringLiteral("VERIFICA MATRICOLA")));
    layouts[0]->addWidget(body(pages[0], "lblPag1_Verifica",
                               QStringLiteral("Verifica che la targhetta autoadesiva riportante il provvedimento di "
                                              "approvazione e la matricola, coincida con la targhetta riportata in prima "
                                              "pagina del libretto.")));
    auto *matRow = new QHBoxLayout;
    matRow->addWidget(named(new QLabel(QStringLiteral("Numero matricola:"), pages[0]), "lblNMat"));
    lblMat = named(new QLabel(pages[0]), "lblMat");
    lblMat->setTextInteractionFlags(Qt::TextSelectableByMouse);
    matRow->addWidget(lblMat, 1);
    layouts[0]->addLayout(matRow);

    layouts[1]->addWidget(title(pages[1], "lblPag2", QStringLiteral("VERIFICA SIGILLO")));
    layouts[1]->addWidget(body(pages[1], "lblPag2_VerSig",
                               QStringLiteral("Controllare che la targhetta verde e il sigillo identificativo (piombo) siano "
                                              "presenti e integri, in caso contrario far eseguire una verificazione "
                                              "periodica da personale autorizzato. Per dettagli vedi istruzioni sul "
                                              "manuale d'uso alla sezione VERIFICAZIONE PERIODICA")));

    layouts[2]->addWidget(title(pages[2], "lblPag3", QStringLiteral("CHIUSURA")));
    layouts[2]->addWidget(body(pages[2], "lblPag3_Chius",
                               QStringLiteral("Effettuare una chiusura fiscale giornaliera premendo il tasto chiusura "
                                              "giornaliera.")));
    btnZChiusura = named(new QPushButton(QStringLiteral("Chiusura giornaliera"), pages[2]), "btnZChiusura");
    layouts[2]->addWidget(btnZChiusura, 0, Qt::AlignLeft);

    layouts[3]->addWidget(title(pages[3], "lblPag4", QStringLiteral("CONTROLLO CARTA")));
    layouts[3]->addWidget(body(pages[3], "lblPag4_verifica",
                               QStringLiteral("Verificare che vi sia abbastanza carta per la stampa della memoria fiscale "
                                              "e la presenza della memoria MMC (DGFE)")));

    layouts[4]->addWidget(title(pages[4], "lblPag5", QStringLiteral("STAMPA MEMORIA FISCALE")));
    layouts[4]->addWidget(body(pages[4], "lblPag5_Stampa",
                               QStringLiteral("Ora è possibile effettuare la stampa cliccando sul tasto stampa.")));
    btnPrint = named(new QPushButton(QStringLiteral("Stampa memoria"), pages[4]), "btnPrint");
    layouts[4]->addWidget(btnPrint, 0, Qt::AlignLeft);

    layouts[5]->addWidget(title(pages[5], "lblLibFisc", QStringLiteral("LIBRETTO FISCALE")));
    layouts[5]->addWidget(body(pages[5], "lblPag6_LibFisc",
                               QStringLiteral("Compilare il libretto fiscale aggiungendo sulla pagina DISINSTALLATO IN "
                                              "DATA_______, STAMPARE 2 copie del modulo 'comunicazioni misuratori "
                                              "fiscali' cliccando sul tasto stampa modulo. Allegare una copia al "
                                              "libretto e una copia va inviata all'agenzia delle entrate.")));
    btnSample = named(new QPushButton(QStringLiteral("Istruzioni compilazione libretto fiscale"), pages[5]), "btnSample");
    btnPrintMod = named(new QPushButton(QStringLiteral("Stampa modulo"), pages[5]), "btnPrintMod");
    auto *modRow = new QHBoxLayout;
    modRow->addWidget(btnSample);
    modRow->addWidget(btnPrintMod);
    modRow->addStretch();
    layouts[5]->addLayout(modRow);

    layouts[6]->addWidget(title(pages[6], "lblPag7", QStringLiteral("DA TRATTENERE")));
    layouts[6]->addWidget(body(pages[6], "lblPag7_Trat",
                               QStringLiteral("Copia del LIBRETTO FISCALE compilato e firmato, stampa integrale della "
                                              "memoria fiscale e il rotolo di carta o memoria FLASH DGFE del giornale "
                                              "di fondo")));
    for (QVBoxLayout *l : layouts)
        l->addStretch();

    btnBack = named(new QPushButton(QStringLiteral("INDIETRO"), this), "btnBack");
    btnFwd = named(new QPushButton(QStringLiteral("AVANTI"), this), "btnFwd");
    QHBoxLayout *buttons = StepButtons(btnBack, btnFwd);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1);
    layout->addLayout(buttons);
    resize(560, 360);


    connect(btnBack, &QPushButton::clicked, this, &RemoveStepForm::btnBack_Click);
    connect(btnFwd, &QPushButton::clicked, this, &RemoveStepForm::btnFwd_Click);
    connect(btnZChiusura, &QPushButton::clicked, this, &RemoveStepForm::btnZChiusura_Click);
    connect(btnPrint, &QPushButton::clicked, this, &RemoveStepForm::btnPrint_Click);
    connect(btnSample, &QPushButton::clicked, this, &RemoveStepForm::btnSample_Click);
    connect(btnPrintMod, &QPushButton::clicked, this, &RemoveStepForm::btnPrintMod_Click);
    connect(SSTab1, &QTabWidget::currentChanged, this, &RemoveStepForm::tabChanged);

    // Load
    ClosureDone = false;
    FiscalMemoryPrinted = false;
    ModuleOpened = false;
    StepRefused = false;
    // Nothing of a commissioning's customer lists is carried into the
    // declaration: its fields are left blank for the hand.
    gRagioneSociale = QStringList{QString()};
    gIndirizzo = QStringList{QString()};
    gSede = QStringList{QString()};
    lblMat->setText(GetMatricola());
    btnBack->setEnabled(false);
    TabClickIgnored = SSTab1->currentIndex() != 0;
    SSTab1->setCurrentIndex(0);
}

void RemoveStepForm::btnBack_Click()
{
    if (SSTab1->currentIndex() >= 1)
        SSTab1->setCurrentIndex(SSTab1->currentIndex() - 1);
}

void RemoveStepForm::btnFwd_Click()
{
    if (btnFwd->text() == QLatin1String("FINE")) {
        accept();
        return;
    }
    if (SSTab1->currentIndex() < SSTab1->count() - 1)
        SSTab1->setCurrentIndex(SSTab1->currentIndex() + 1);
}

void RemoveStepForm::btnZChiusura_Click()
{
    int16_t result = 0;
    if (!gFPControl->Busy()) {
        int16_t op = 1;
        result = gFPControl->FiscalClosure(op);
    }
    // A busy control sends nothing, and the step counts as done.
    ClosureDone = result == 0;
    if (result != 0)
        ReportResult(result);
}

void RemoveStepForm::btnPrint_Click()
{
    int16_t result = 0;
    if (!gFPControl->Busy())
        result = gFPControl->PrintFiscalMemory(1);
    FiscalMemoryPrinted = result == 0;
    if (result != 0)
        ReportResult(result);
}

void RemoveStepForm::btnSample_Click()
{
    InstallLibrettoFiscaleForm::SampleMode = true;
    InstallLibrettoFiscaleForm form(this);
    form.lblTitolo->setText(QStringLiteral("Aggiungere DISINSTALLATO IN DATA:________"));
    form.exec();
}

void RemoveStepForm::btnPrintMod_Click()
{
    PrintFoglioForm::PrintMode = 2;
    {
        PrintFoglioForm form(this);
        form.exec();
    }
    // Having opened the screen is all that the step asks.
    ModuleOpened = true;
}

void RemoveStepForm::tabChanged(int tab)
{
    const int previous = m_shownTab;
    m_shownTab = tab;
    SSTab1_Click(previous, tab);
}

void RemoveStepForm::SSTab1_Click(int previous, int tab)
{
    if (TabClickIgnored) {
        TabClickIgnored = false;
        return;
    }

    const int last = SSTab1->count() - 1;
    btnBack->setEnabled(tab != 0);
    btnFwd->setEnabled(true);
    btnFwd->setText(tab == last ? QStringLiteral("FINE") : QStringLiteral("AVANTI"));

    // The move back below fires this handler once more, from inside; that
    // inner call only sets the buttons.
    if (StepRefused) {
        StepRefused = false;
        return;
    }

    StepRefused = std::abs(tab - previous) > 1;
    // What the step that was left demands holds in both directions.
    QString word;
    if (previous == 2 && !ClosureDone)
        word = QStringLiteral("Fare la chiusura!");
    else if (previous == 4 && !FiscalMemoryPrinted)
        word = QStringLiteral("Stampa la memoria fiscale!");
    else if (previous == 5 && !ModuleOpened)
        word = QStringLiteral("Stampa modulo!");
    if (!word.isEmpty()) {
        MsgBox::show(word);
        StepRefused = true;
        SSTab1->setCurrentIndex(previous);
    }
    if (StepRefused) {
        MsgBox::show(QStringLiteral("Puoi avanzare un passo alla volta!"));
        StepRefused = true;
        SSTab1->setCurrentIndex(previous);
    }
}
