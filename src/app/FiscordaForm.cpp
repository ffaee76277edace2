// SPDX-License-Identifier: GPL-3.0-or-later
#include "FiscordaForm.h"

#include "AppIcons.h"

#include "DataOraForm.h"
#include "SetupPrnForm.h"
#include "SplashForm.h"
#include "decommissioning/RemoveStepForm.h"
#include "journal/GiornaleDGFEForm.h"
#include "programming/XmlViewForm.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "printer/Connection.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"
#include "settings/XmlSettings.h"
#include "ui/MsgBox.h"
#include "ui/ReportResult.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
FiscordaForm *g_mainForm = nullptr;

QPushButton *bigButton(QWidget *parent, const char *name, const QString &caption, const char *icon)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setIcon(AppIcon(icon));
    b->setIconSize(QSize(40, 40));
    b->setMinimumSize(220, 90);
    QFont f = b->font();
    f.setPointSize(f.pointSize() + 2);
    f.setBold(true);
    b->setFont(f);
    return b;
}
}

QString ProgramVersionText()
{
    return QStringLiteral("%1.%2.%3").arg(FISCORDA_VERSION_MAJOR).arg(FISCORDA_VERSION_MINOR).arg(FISCORDA_VERSION_REVISION);
}

FiscordaForm *FiscordaForm::instance()
{
    return g_mainForm;
}

FiscordaForm::FiscordaForm(KelvoFPControl *control, QWidget *parent)
    : QMainWindow(parent), KelvoFPControl1(control)
{
    g_mainForm = this;
    setObjectName(QStringLiteral("FiscordaForm"));

    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);
    LabelModelloCassa = new QLabel(central);
    LabelModelloCassa->setObjectName(QStringLiteral("LabelModelloCassa"));
    LabelModelloCassa->setAlignment(Qt::AlignCenter);
    LabelModelloCassa->setAutoFillBackground(true);
    LabelModelloCassa->setStyleSheet(QStringLiteral("QLabel { background: #0000c0; color: white; font-weight: bold; font-size: 12pt; padding: 6px; }"));
    LabelModelloCassa->setMinimumHeight(34);
    layout->addWidget(LabelModelloCassa);

    auto *grid = new QGridLayout;
    btnInstall = bigButton(central, "btnInstall", QStringLiteral("Messa in servizio"), "install");
    btnRemove = bigButton(central, "btnRemove", QStringLiteral("Disinstallazione"), "remove");
    btnDGFE = bigButton(central, "btnDGFE", QStringLiteral("Giornale Elettronico DGFE"), "journal");
    btnSimul = bigButton(central, "btnSimul", QStringLiteral("Simulatore"), "simulator");
    grid->addWidget(btnInstall, 0, 0);
    grid->addWidget(btnRemove, 0, 1);
    grid->addWidget(btnDGFE, 1, 0);
    grid->addWidget(btnSimul, 1, 1);
    // Two columns of one width, so that the longest caption does not widen
    // its own column alone; room around and between the buttons.
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    int widest = 0;
    for (const QPushButton *b : {btnInstall, btnRemove, btnDGFE, btnSimul})
        widest = qMax(widest, b->sizeHint().width() + 24);
    grid->setColumnMinimumWidth(0, widest);
    grid->setColumnMinimumWidth(1, widest);
    grid->setSpacing(12);
    grid->setContentsMargins(12, 12, 12, 12);
    layout->addLayout(grid);
    btnEsci = new QPushButton(QStringLiteral("ESCI"), central);
    btnEsci->setObjectName(QStringLiteral("btnEsci"));
    btnEsci->setMinimumHeight(40);
    layout->addWidget(btnEsci);
    setCentralWidget(central);

    mTools = menuBar()->addMenu(QStringLiteral("Strumenti"));
    mTools->setObjectName(QStringLiteral("mTools"));
    mSetupPrn = mTools->addAction(QStringLiteral("Impostazioni stampante"));
    mSetupPrn->setObjectName(QStringLiteral("mSetupPrn"));
    mXmlRead = mTools->addAction(QStringLiteral("Ripristino dati da file"));
    mXmlRead->setObjectName(QStringLiteral("mXmlRead"));
    mPrnRead = mTools->addAction(QStringLiteral("Lettura dati da stampante"));
    mPrnRead->setObjectName(QStringLiteral("mPrnRead"));
    mHelp = menuBar()->addMenu(QStringLiteral("Help"));
    mHelp->setObjectName(QStringLiteral("mHelp"));
    mAbout = mHelp->addAction(QStringLiteral("About"));
    mAbout->setObjectName(QStringLiteral("mAbout"));

    connect(btnInstall, &QPushButton::clicked, this, &FiscordaForm::btnInstall_Click);
    connect(btnRemove, &QPushButton::clicked, this, &FiscordaForm::btnRemove_Click);
    connect(btnDGFE, &QPushButton::clicked, this, &FiscordaForm::btnDGFE_Click);
    connect(btnSimul, &QPushButton::clicked, this, &FiscordaForm::btnSimul_Click);
    connect(btnEsci, &QPushButton::clicked, this, &FiscordaForm::btnEsci_Click);
    connect(mSetupPrn, &QAction::triggered, this, &FiscordaForm::mSetupPrn_Click);
    connect(mXmlRead, &QAction::triggered, this, &FiscordaForm::mXmlRead_Click);
    connect(mPrnRead, &QAction::triggered, this, &FiscordaForm::mPrnRead_Click);
    connect(mAbout, &QAction::triggered, this, &FiscordaForm::mAbout_Click);

    // Load: the caption carries the program's version.
    setWindowTitle(QStringLiteral("Fiscorda - ") + ProgramVersionText());
}

FiscordaForm::~FiscordaForm()
{
    if (g_mainForm == this)
        g_mainForm = nullptr;
}

void FiscordaForm::InizializzaOCX(QString &modelText)
{
    gFPControl = KelvoFPControl1;
    gFPControl->setEuroSettings(2);
    gFPControl->setTimeoutAck(-1);
    gFPControl->setTimeoutOp(-1);

    XmlSettings settings;
    settings.OpenSettings(QStringLiteral("Settings"), QString(), QString());
    if (settings.Loaded) {
        QString value;
        gFPControl->setUseTcp(settings.GetValue(QStringLiteral("mode"), value) && value == QLatin1String("TCP") ? 1 : 0);
        gFPControl->setComPort(settings.GetValue(QStringLiteral("comnumber"), value) ? Conv::ToInteger(value) : int16_t(1));
        gFPControl->setComSettings(settings.GetValue(QStringLiteral("comsettings"), value) ? value : QStringLiteral("9600,n,8,1"));
        gFPControl->setTcpPort(settings.GetValue(QStringLiteral("tcpport"), value) ? Conv::ToInteger(value) : int16_t(4660));
        gFPControl->setIpAddress(settings.GetValue(QStringLiteral("ipaddress"), value) ? value : QStringLiteral("192.168.0.100"));
        gFPControl->setTimeoutAck(settings.GetValue(QStringLiteral("timeoutack"), value) ? Conv::ToInteger(value) : int16_t(-1));
        gFPControl->setTimeoutOp(settings.GetValue(QStringLiteral("timeoutop"), value) ? Conv::ToInteger(value) : int16_t(-1));
        gMaxNReparti = 40;
        if (settings.GetValue(QStringLiteral("maxnreparti"), value) && Conv::IsNumeric(value))
            gMaxNReparti = Conv::ToInteger(value);
    } else {
        // The first run without a settings file works on the serial port;
        // TCP port, address and gMaxNReparti stay as they are until the
        // setup is saved.
        gFPControl->setUseTcp(0);
        gFPControl->setComPort(1);
        gFPControl->setComSettings(QStringLiteral("9600,n,8,1"));
    }

    int16_t result = 1; // "Registratore non collegato." until the printer answers
    auto *splash = new SplashForm(this);
    splash->show();
    QApplication::processEvents();
    OpenPort();
    if (IsPortOpen()) {
        result = gFPControl->ReadDateTime();
        modelText = PrinterModelText(GetPrinterModel());
    }
    delete splash;
    unsetCursor();

    if (result != 0) {
        ReportResult(result);
        // The printer could not be reached: the setup, before the main form is seen.
        SetupPrnForm setup(this);
        setup.exec();
    }
    // The settings object is dropped here without saving.
}

void FiscordaForm::closeEvent(QCloseEvent *event)
{
    // Unload: close the port; nothing is asked and nothing is saved.
    if (gFPControl && IsPortOpen())
        ClosePort();
    event->accept();
}

void FiscordaForm::btnInstall_Click()
{
    DataOraForm::WizardMode = true;
    DataOraForm form(this);
    form.exec();
}

void FiscordaForm::btnRemove_Click()
{
    RemoveStepForm form(this);
    form.exec();
}

void FiscordaForm::btnDGFE_Click()
{
    GiornaleDGFEForm form(this);
    form.exec();
}

void FiscordaForm::btnSimul_Click()
{
    KelvoFpSimulaForm form(this);
    form.exec();
}

void FiscordaForm::btnEsci_Click()
{
    close();
    QCoreApplication::quit();
}

void FiscordaForm::mSetupPrn_Click()
{
    SetupPrnForm form(this);
    form.exec();
}

void FiscordaForm::mXmlRead_Click()
{
    const std::optional<QString> chosen = XmlViewForm::ChooseFileToOpen(this);
    if (!chosen) {
        MsgBox::show(QStringLiteral("Lettura dati da file annullata!"), QMessageBox::Ok, QMessageBox::Information,
                     MsgBox::applicationTitle());
        return;
    }
    // A new form for each file, released when it closes.
    XmlViewForm::XmlFile = *chosen;
    XmlViewForm::FormMode = 2;
    XmlViewForm form(this);
    form.exec();
}

void FiscordaForm::mPrnRead_Click()
{
    XmlViewForm::FormMode = 1;
    XmlViewForm form(this);
    form.exec();
}

void FiscordaForm::mAbout_Click()
{
    MsgBox::show(QStringLiteral("FISCORDA versione: ") + ProgramVersionText());
}
