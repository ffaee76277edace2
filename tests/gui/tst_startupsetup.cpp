// Start-up as the technician meets it: the probe, the one message when no
// printer answers, the setup before the main window, the settings that the
// start reads, and the second instance that is sent away untouched. Also
// the main form's roads into the setup and the date screen.
#include "FakeFPControl.h"
#include "ModalWatch.h"
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "app/Main.h"
#include "app/SingleInstance.h"
#include "printer/SharedState.h"
#include "settings/ProgramFolder.h"
#include "ui/MsgBox.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QLockFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

class TestStartupSetup : public QObject
{
    Q_OBJECT
    FakeFPControl fake;
    std::unique_ptr<QTemporaryDir> folder;
    QStringList modalsSeen;

    void writeSettings(const QString &body)
    {
        QFile file(folder->filePath(QStringLiteral("Settings.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("<settings>%1</settings>").arg(body).toUtf8());
    }
    // Closes the setup when it comes, noting that it came.
    void leaveSetupWhenShown()
    {
        whenModal(QStringLiteral("SetupPrnForm"), [this](QWidget *w) {
            modalsSeen.append(w->objectName());
            w->findChild<QPushButton *>(QStringLiteral("btnEsci"))->click();
        });
    }
    std::unique_ptr<FiscordaForm> start()
    {
        return std::unique_ptr<FiscordaForm>(Main(&fake));
    }

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        SetProgramFolderForTests(folder->path());
        fake = FakeFPControl();
        gFPControl = nullptr;
        gMaxNReparti = 0;
        modalsSeen.clear();
        MsgBox::startRecording();
    }
    void cleanup()
    {
        MsgBox::stopRecording();
        SetProgramFolderForTests(QString());
    }

    void noFileNoPrinter()
    {
        fake.comPortOpens = false;
        leaveSetupWhenShown();
        auto form = start();
        QVERIFY(form);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Registratore non collegato.\r\n"});
        QCOMPARE(modalsSeen, QStringList{"SetupPrnForm"});
        QVERIFY(form->isVisible());
        QCOMPARE(form->windowTitle(), QStringLiteral("Fiscorda - 1.0.48"));
        QCOMPARE(form->LabelModelloCassa->text(), QString());
        QCOMPARE(fake.UseTcp(), 0);
        QCOMPARE(int(fake.ComPort()), 1);
        QCOMPARE(fake.ComSettings(), QStringLiteral("9600,n,8,1"));
        QCOMPARE(fake.EuroSettings(), 2);
        QCOMPARE(int(gMaxNReparti), 0); // stays as it was until the setup is saved
        QCOMPARE(fake.count(QStringLiteral("ReadDateTime")), 0);
        QVERIFY(!QFile::exists(folder->filePath(QStringLiteral("Settings.xml"))));
    }

    void printerThatAnswersGoesStraightToTheMainForm()
    {
        fake.setProperty(QStringLiteral("MatricolaPrefix"), QStringLiteral("QM"));
        fake.setProperty(QStringLiteral("MatricolaModel"), QStringLiteral("01"));
        leaveSetupWhenShown();
        auto form = start();
        QVERIFY(MsgBox::shown().isEmpty());
        QVERIFY(modalsSeen.isEmpty());
        QCOMPARE(form->LabelModelloCassa->text(), QStringLiteral("KELVO KX90 II"));
        QCOMPARE(fake.callNames().mid(0, 4), (QStringList{"OpenComPort", "IsComPortOpen", "IsComPortOpen", "ReadDateTime"}));
    }

    void printerThatDoesNotAnswer()
    {
        fake.setDefaultResult(QStringLiteral("ReadDateTime"), 8);
        fake.setDefaultResult(QStringLiteral("ReadMatricola"), 8);
        leaveSetupWhenShown();
        auto form = start();
        QCOMPARE(MsgBox::shownTexts(),
                 QStringList{"La stampante ha risposto ACK, ma entro il timeout non ha cominciato ad inviare la risposta.\r\n"});
        QCOMPARE(modalsSeen, QStringList{"SetupPrnForm"});
        QCOMPARE(form->LabelModelloCassa->text(), QStringLiteral("KELVO KX90"));
    }

    void lowerCaseTcpCountsAsSerial()
    {
        writeSettings(QStringLiteral("<mode>tcp</mode><comnumber>2</comnumber><maxnreparti>abc</maxnreparti>"));
        auto form = start();
        QCOMPARE(fake.UseTcp(), 0);
        QCOMPARE(int(fake.ComPort()), 2);
        QCOMPARE(fake.count(QStringLiteral("OpenTcp")), 0);
        QCOMPARE(fake.count(QStringLiteral("OpenComPort")), 1);
        QCOMPARE(int(gMaxNReparti), 40);
    }

    void fileSetsTheControl()
    {
        writeSettings(QStringLiteral("<mode>TCP</mode><tcpport>9100</tcpport><ipaddress>127.0.0.1</ipaddress>"
                                     "<timeoutack>3</timeoutack><timeoutop>4</timeoutop><maxnreparti>55</maxnreparti>"));
        auto form = start();
        QCOMPARE(fake.UseTcp(), 1);
        QCOMPARE(int(fake.TcpPort()), 9100);
        QCOMPARE(fake.IpAddress(), QStringLiteral("127.0.0.1"));
        QCOMPARE(int(fake.TimeoutAck()), 3);
        QCOMPARE(int(fake.TimeoutOp()), 4);
        QCOMPARE(int(gMaxNReparti), 55);
        QCOMPARE(fake.count(QStringLiteral("OpenTcp")), 1);
    }

    void secondInstanceIsRefusedUntouched()
    {
        SingleInstance::releaseForTests();
        QLockFile other(SingleInstance::lockPath());
        QVERIFY(other.tryLock(0));
        auto form = start();
        QVERIFY(!form);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programma Fiscorda già in esecuzione"});
        QVERIFY(fake.calls.isEmpty());
        QVERIFY(gFPControl == nullptr);
        other.unlock();
    }

    void menuOpensTheSetupAndInstallOpensTheDateInItsWizardRole()
    {
        auto form = start();
        leaveSetupWhenShown();
        form->mSetupPrn->trigger();
        QCOMPARE(modalsSeen, QStringList{"SetupPrnForm"});

        DataOraForm::WizardMode = false;
        QString forward;
        whenModal(QStringLiteral("DataOraForm"), [&forward](QWidget *w) {
            auto *ok = w->findChild<QPushButton *>(QStringLiteral("btnOk"));
            forward = ok->text();
            ok->click(); // refused: no date set yet
            w->close();  // the close box abandons the commissioning
        });
        form->btnInstall->click();
        QCOMPARE(forward, QStringLiteral("AVANTI"));
        QVERIFY(DataOraForm::WizardMode);
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Impostare la Data/Ora prima di proseguire!"));
    }
};

QTEST_MAIN(TestStartupSetup)
#include "tst_startupsetup.moc"
