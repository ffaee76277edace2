// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the program's screens for the documentation: each screen is
// built by its class against the emulated printer (in this process, over
// loopback TCP, on a free port), shown, grabbed into <folder>/<Class>.png and
// closed. Message boxes are answered on their own, and a window that a
// screen opens modally while it loads is closed at once, so nothing waits
// for a hand.
//
//     screenshots [<folder>]        (default: docs/screenshots)
//
// Run it under QT_QPA_PLATFORM=offscreen (tools/screenshots.sh does).
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "app/FpMonitorForm.h"
#include "app/SetupPrnForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "commissioning/LoghiForm.h"
#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"
#include "printer/SharedState.h"
#include "settings/ProgramFolder.h"
#include "ui/MsgBox.h"

#include "programming/ProgForm.h"
#include "programming/XmlViewForm.h"
#include "journal/GiornaleDGFEForm.h"
#include "journal/DGFEForm.h"
#include "journal/GiornaleStepForm.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "simulator/XRepForm.h"
#include "paperwork/InstallExtraModForm.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "decommissioning/RemoveStepForm.h"
#include "emulator/window/PrinterWindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTcpServer>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <functional>
#include <memory>

namespace {

QTextStream &out()
{
    static QTextStream s(stdout);
    return s;
}

void settle(int ms)
{
    QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

// The program's folder for the run: a scratch folder with the pictures and
// standard logos of the real one beside it, so that per-printer files land
// in the scratch folder.
bool prepareFolder(const QTemporaryDir &scratch)
{
    const QDir bin(QCoreApplication::applicationDirPath());
    for (const char *name : {"img", "LoghiStandard"}) {
        if (bin.exists(name) && !QFile::link(bin.filePath(name), QDir(scratch.path()).filePath(name)))
            return false;
    }
    SetProgramFolderForTests(scratch.path());
    return true;
}

struct Shot
{
    QString name;
    std::function<QWidget *()> make;
};

template <typename Form>
Shot shot(const char *name, std::function<void()> before = {})
{
    return {QString::fromLatin1(name), [before] {
                if (before)
                    before();
                return static_cast<QWidget *>(new Form(nullptr));
            }};
}

// The training printer's window beside the simulator, a receipt rung up on
// the one and printed on the other: PrinterWindow.png.
bool trainingPrinterShot(KelvoProtocolControl &control, const QString &folder)
{
    WindowSettings settings;
    settings.statePath = QDir(ProgramFolder()).filePath(QStringLiteral("printer-state.json"));
    settings.tcpPort = 0;
    for (quint16 port = quint16(23000 + QCoreApplication::applicationPid() % 5000); port < 32767 && !settings.tcpPort; ++port) {
        QTcpServer probe;
        if (probe.listen(QHostAddress::LocalHost, port))
            settings.tcpPort = port;
    }
    PrinterWindow window(settings);
    window.resize(1000, 720);
    window.show();
    control.CloseTcp();
    control.setTcpPort(int16_t(settings.tcpPort));
    if (control.OpenTcp() != 0) {
        out() << "PrinterWindow: the control cannot reach it" << Qt::endl;
        return false;
    }
    // A standard logo at the receipt's head, printed as its picture.
    QFile logo(QDir(ProgramFolder()).filePath(QStringLiteral("LoghiStandard/02_pasqua_60.bin")));
    if (logo.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = logo.readAll();
        window.withPrinter([&bytes](EmulatorServer &p) {
            p.execute("LoadLogoFile", {bytes});
            p.execute("WriteParam", {"9", "2"});
        });
    }
    KelvoFpSimulaForm simulator(nullptr);
    simulator.show();
    settle(200);
    for (const QString &t : QStringLiteral("2 , 5 0 btnRep_0 3 x 1 , 2 btnRep_1 0 , 3 btnAbbuonoMenoVal_0 "
                                           "4 btnRep_3 4 btnStorno_3 1 0 btnContante").split(QLatin1Char(' '))) {
        if (t.size() == 1 && t[0].isDigit())
            simulator.btnTastiera[t == QLatin1String("0") ? 9 : t.toInt() - 1]->click();
        else if (t == QLatin1String(","))
            simulator.btnDecimali->click();
        else if (t == QLatin1String("x"))
            simulator.btnMoltiplicatoreProd->click();
        else if (auto *b = simulator.findChild<QPushButton *>(t))
            b->click();
    }
    window.flush();
    settle(300);
    const QPixmap left = simulator.grab(), right = window.grab();
    QPixmap both(left.width() + right.width() + 16, qMax(left.height(), right.height()));
    both.fill(QColor(0xde, 0xe2, 0xe8));
    {
        QPainter p(&both);
        p.drawPixmap(0, 0, left);
        p.drawPixmap(left.width() + 16, 0, right);
    }
    const bool saved = both.save(QDir(folder).filePath(QStringLiteral("PrinterWindow.png")), "PNG", 9);
    out() << "PrinterWindow: " << both.width() << "x" << both.height() << (saved ? "" : "  NOT SAVED") << Qt::endl;
    control.CloseTcp();
    return saved;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs/screenshots");
    if (!QDir().mkpath(folder)) {
        out() << "cannot create " << folder << Qt::endl;
        return 1;
    }
    QTemporaryDir scratch(QDir(QDir::tempPath()).filePath(QStringLiteral("Fiscorda-XXXXXX")));
    if (!scratch.isValid() || !prepareFolder(scratch)) {
        out() << "cannot prepare a program folder" << Qt::endl;
        return 1;
    }

    EmulatorServer emu{EmulatorConfig()};
    QString error;
    if (!emu.start(&error)) {
        out() << "emulator: " << error << Qt::endl;
        return 1;
    }
    const quint16 port = ListenForControl(emu);
    if (port == 0) {
        out() << "no free port" << Qt::endl;
        return 1;
    }

    // The setup on screen and the main form's start read the link from the
    // settings file: it names the emulator.
    QFile settings(QDir(scratch.path()).filePath(QStringLiteral("Settings.xml")));
    if (!settings.open(QIODevice::WriteOnly)
        || settings.write(QStringLiteral("<settings><mode>TCP</mode><comnumber>1</comnumber><comsettings>9600,n,8,1"
                                         "</comsettings><tcpport>%1</tcpport><ipaddress>127.0.0.1</ipaddress>"
                                         "<timeoutack>-1</timeoutack><timeoutop>-1</timeoutop><maxnreparti>40"
                                         "</maxnreparti></settings>")
                              .arg(port)
                              .toUtf8())
               < 0) {
        out() << "cannot write the settings file" << Qt::endl;
        return 1;
    }
    settings.close();

    KelvoProtocolControl control;
    OpenControl(control, port);
    gFPControl = &control;

    MsgBox::startRecording();
    // Whatever a screen opens modally while it loads is closed at once.
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [] {
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    closer.start(20);

    QList<Shot> shots{
        {QStringLiteral("FiscordaForm"), [&control] {
             auto *form = new FiscordaForm(&control);
             QString modelText; // the model's name under the title, as at the start
             form->InizializzaOCX(modelText);
             form->LabelModelloCassa->setText(modelText);
             return static_cast<QWidget *>(form);
         }},
        shot<SetupPrnForm>("SetupPrnForm"),
        shot<DataOraForm>("DataOraForm", [] { DataOraForm::WizardMode = false; }),
        shot<FpMonitorForm>("FpMonitorForm"),
        shot<InstallHeaderForm>("InstallHeaderForm", [] { InstallHeaderForm::StandaloneMode = true; }),
        shot<InstallFlagForm>("InstallFlagForm", [] { InstallFlagForm::StandaloneMode = true; }),
        shot<InstallLogoForm>("InstallLogoForm", [] { InstallLogoForm::StandaloneMode = true; }),
        shot<LoghiForm>("LoghiForm"),
        shot<ProgForm>("ProgForm", [] {
            ProgForm::WizardMode = false;
            ProgForm::TableKind = 4;
        }),
        shot<XmlViewForm>("XmlViewForm"),
        shot<GiornaleDGFEForm>("GiornaleDGFEForm"),
        shot<DGFEForm>("DGFEForm"),
        shot<GiornaleStepForm>("GiornaleStepForm"),
        shot<KelvoFpSimulaForm>("KelvoFpSimulaForm"),
        shot<XRepForm>("XRepForm"),
        shot<InstallExtraModForm>("InstallExtraModForm"),
        shot<InstallLibrettoFiscaleForm>("InstallLibrettoFiscaleForm"),
        shot<PrintFoglioForm>("PrintFoglioForm"),
        shot<RemoveStepForm>("RemoveStepForm"),
    };

    int failures = 0;
    for (const Shot &s : shots) {
        MsgBox::clearShown();
        // Closing the main form closes the connection, as at the program's end.
        int32_t state = 0;
        if (!control.IsTcpOpen(state))
            control.OpenTcp();
        std::unique_ptr<QWidget> form(s.make());
        if (form->findChildren<QWidget *>().isEmpty()) {
            out() << s.name << ": a skeleton still, no picture" << Qt::endl;
            continue;
        }
        form->show();
        settle(300); // the screen's timers and late paints
        const QPixmap picture = form->grab();
        const QString path = QDir(folder).filePath(s.name + QStringLiteral(".png"));
        const bool saved = picture.save(path, "PNG", 9);
        out() << s.name << ": " << picture.width() << "x" << picture.height() << (saved ? "" : "  NOT SAVED");
        for (const QString &text : MsgBox::shownTexts())
            out() << "\n    box: " << QString(text).replace(QStringLiteral("\r\n"), QStringLiteral(" | "));
        out() << Qt::endl;
        failures += saved ? 0 : 1;
        form->close();
        form.reset();
        settle(20);
    }
    failures += trainingPrinterShot(control, folder) ? 0 : 1;
    gFPControl = nullptr;
    return failures == 0 ? 0 : 1;
}
