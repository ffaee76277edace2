// The core screens against the emulated printer, over the real control: the
// speed search on a pseudo-terminal, the printer's refusal of a date before
// the last closure, the closure that a sale makes necessary, and the setup
// saved from the main form.
#include "FormTestEnv.h"
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "app/Main.h"
#include "app/SetupPrnForm.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

class TestScreensEmulator : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    std::optional<EmulatorServer> emu;
    std::optional<KelvoProtocolControl> control;

    // TcpPort is a 16-bit Integer: the emulator listens below 32768.
    quint16 listen()
    {
        quint16 port = 20000 + QCoreApplication::applicationPid() % 5000;
        while (!emu->listenTcp(QHostAddress::LocalHost, port))
            ++port;
        control->setUseTcp(1);
        control->setIpAddress("127.0.0.1");
        control->setTcpPort(int16_t(port));
        control->OpenTcp();
        return port;
    }
    void run(const char *name, const QList<QByteArray> &args) { QCOMPARE(emu->execute(name, args).result, 0); }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        EmulatorConfig config;
        config.model = EmulatorConfig::Model::KX81;
        emu.emplace(config);
        QVERIFY(emu->start());
        control.emplace();
        control->setEuroSettings(2); // as the start-up leaves it
        gFPControl = &*control;
    }
    void cleanup()
    {
        control.reset();
        emu.reset();
        env.reset();
    }

    void speedSearchOnAPseudoTerminal()
    {
        QVERIFY(emu->openPty(env->folder.path(), 1, "19200,n,8,1"));
        QStringList speeds; // the line settings under which requests went out
        control->setTrafficObserver([&](KelvoProtocolControl::Direction d, const QByteArray &) {
            if (d == KelvoProtocolControl::Direction::Sent && speeds.value(speeds.size() - 1) != control->ComSettings())
                speeds << control->ComSettings();
        });
        SetupPrnForm form;
        form.btnAutoSet->click();
        QCOMPARE(speeds, QStringList({"9600,n,8,1", "19200,n,8,1"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Velocità impostata a 19200"});
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("19200"));
        QCOMPARE(QList<int>({control->TimeoutAck(), control->TimeoutOp()}), QList<int>({-1, -1}));
    }

    void dateBeforeTheLastClosure()
    {
        listen();
        run("FiscalClosure", {"1"});
        DataOraForm form;
        form.dtData->setDate(form.dtData->date().addDays(-1));
        form.btnSet->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Errore del registratore di cassa: DATA INFERIORE.\r\n"));
        QVERIFY(!form.dateSet);
    }

    void saleMakesTheClosureComeFirst()
    {
        listen();
        run("SellReparto", {"1", "1", "PANE", "25000", "1", "1"});
        run("PayReceipt", {"1", "", "0", "0", "0", "1"});
        DataOraForm form;
        MsgBox::clearShown();
        form.dtData->setDate(form.dtData->date().addDays(1));
        form.btnSet->click(); // yes to both questions
        QCOMPARE(MsgBox::shownTexts().first(),
                 QStringLiteral("Per programmare la data bisogna fare una chiusura fiscale. Procedo con la chiusura fiscale?"));
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Aggiornamento Data/Ora eseguito"));
        QVERIFY(emu->model().context().roll.tail().join('\n').contains("CHIUSURA GIORNALIERA"));
        QVERIFY(form.dateSet);
    }

    void setupSavedFromTheMainForm()
    {
        QFile(env->folder.filePath("COM1")).open(QIODevice::WriteOnly); // a COM1 that is no serial port
        whenModal("SetupPrnForm", [](QWidget *w) { w->close(); });
        std::unique_ptr<FiscordaForm> mainForm(Main(&*control));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Registratore non collegato.\r\n"});

        const quint16 port = listen();
        whenModal("SetupPrnForm", [port](QWidget *w) {
            auto *form = static_cast<SetupPrnForm *>(w);
            form->radioTCP->click();
            form->txtIpAddress->setText("127.0.0.1");
            form->txtTcpPort->setText(QString::number(port));
            form->btnSave->click();
            form->btnEsci->click();
        });
        mainForm->mSetupPrn->trigger();
        QCOMPARE(env->readSettings(), QStringLiteral("<settings><mode>TCP</mode><comnumber>1</comnumber><comsettings>9600,n,8,1"
                                                     "</comsettings><tcpport>%1</tcpport><ipaddress>127.0.0.1</ipaddress>"
                                                     "<timeoutack>-1</timeoutack><timeoutop>-1</timeoutop><maxnreparti>40"
                                                     "</maxnreparti></settings>").arg(port));
        QCOMPARE(mainForm->LabelModelloCassa->text(), QStringLiteral("KELVO KX81"));
    }
};

QTEST_MAIN(TestScreensEmulator)
#include "tst_screensemulator.moc"
