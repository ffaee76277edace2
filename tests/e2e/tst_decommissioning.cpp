// The decommissioning against the emulated printer over TCP: a closure that
// the printer refuses bars the way until one succeeds, the closure and the
// whole fiscal memory land on the paper roll, and the declaration of the
// fifth step carries the printer's serial number, its resets count (those of
// the memory before it, plus the closure just made) and its date.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "decommissioning/RemoveStepForm.h"
#include "emulator/EmulatorServer.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "printer/KelvoProtocolControl.h"
#include "ui/FileDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

class TestDecommissioning : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    std::optional<EmulatorServer> emu;
    std::optional<KelvoProtocolControl> control;

    QString paper() const { return QString::fromUtf8(TestFiles::contentOf(env->folder.filePath("paper.txt"))); }
    void run(const char *name, const QList<QByteArray> &args) { QCOMPARE(emu->execute(name, args).result, 0); }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        FileDialog::startRecording();
        SystemPrinters::useForTests({});
        EmulatorConfig config;
        config.resets = 41;
        config.paperPath = env->folder.filePath("paper.txt");
        emu.emplace(config);
        QVERIFY(emu->start());
        control.emplace();
        control->setEuroSettings(2);
        // TcpPort is a 16-bit Integer: the emulator listens below 32768.
        quint16 port = 20000 + QCoreApplication::applicationPid() % 5000;
        while (!emu->listenTcp(QHostAddress::LocalHost, port))
            ++port;
        control->setUseTcp(1);
        control->setIpAddress("127.0.0.1");
        control->setTcpPort(int16_t(port));
        control->OpenTcp();
        gFPControl = &*control;
    }
    void cleanup()
    {
        control.reset();
        emu.reset();
        SystemPrinters::stopUsingTestPrinters();
        FileDialog::stopRecording();
        env.reset();
    }

    void wholeDecommissioning()
    {
        RemoveStepForm form;
        form.show();
        QCOMPARE(form.lblMat->text(), QStringLiteral("QN41100123"));
        form.btnFwd->click();
        form.btnFwd->click();
        QCOMPARE(form.SSTab1->currentIndex(), 2);

        // A receipt left open: the printer refuses the closure.
        run("SellReparto", {"1", "1", "PANE", "25000", "1", "1"});
        form.btnZChiusura->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Errore del registratore di cassa: CHIUDERE LO SCONTRINO.\r\n"));
        form.btnFwd->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Fare la chiusura!"));
        QCOMPARE(form.SSTab1->currentIndex(), 2);
        run("PayReceipt", {"1", "", "0", "0", "0", "1"});
        form.btnZChiusura->click();
        QVERIFY(form.ClosureDone);
        QVERIFY(paper().contains("AZZERAMENTO N. 0042"));

        form.btnFwd->click();
        form.btnFwd->click();
        QCOMPARE(form.SSTab1->currentIndex(), 4);
        form.btnPrint->click();
        QVERIFY(form.FiscalMemoryPrinted);
        const QString roll = paper();
        const qsizetype memory = roll.indexOf("STAMPA MEMORIA FISCALE");
        QVERIFY(memory > roll.indexOf("CHIUSURA GIORNALIERA"));
        QVERIFY(roll.mid(memory).contains("MATRICOLA QN41100123"));
        QVERIFY(roll.mid(memory).contains(QRegularExpression("AZZERAMENTI +42")));

        form.btnFwd->click();
        const QString declaration = env->folder.filePath("modulo.txt");
        whenModal("PrintFoglioForm", [&](QWidget *w) {
            auto *module = static_cast<PrintFoglioForm *>(w);
            FileDialog::queueAnswer(declaration);
            module->btnPrintFile->click();
            module->btnOK->click();
        });
        form.btnPrintMod->click();
        QCOMPARE(FileDialog::asked().value(0).folder, QStringLiteral("Modulo_Disinstallazione_QN41100123.txt"));
        const QString text = QString::fromLatin1(TestFiles::contentOf(declaration));
        QVERIFY(text.contains("|     KX90      |   QN41100123   |   42    |           |            |\r\n"));
        QVERIFY(text.contains("Sono stati  [] DEFISCALIZZATI  [] CEDUTI  i seguenti misuratori fiscali:"));
        QVERIFY(text.contains("     che in data: " + QDate::currentDate().toString("dd / MM / yyyy") + "\r\n"));
        QVERIFY(text.contains("     della ditta: \r\n")); // blank for the hand

        form.btnFwd->click();
        QCOMPARE(form.btnFwd->text(), QStringLiteral("FINE"));
        form.btnFwd->click();
        QVERIFY(!form.isVisible());
    }
};

QTEST_MAIN(TestDecommissioning)
#include "tst_decommissioning.moc"
