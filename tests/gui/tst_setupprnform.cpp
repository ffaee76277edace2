// The communication setup: what it loads, what each button does to the
// control and to Settings.xml, and the speed search with its order, its
// cancel and its refusal to be closed.
#include "FakeFPControl.h"
#include "app/FiscordaForm.h"
#include "app/SetupPrnForm.h"
#include "printer/SharedState.h"
#include "settings/ProgramFolder.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace {
const QString kDefaultFile = QStringLiteral(
    "<settings><mode>COM</mode><comnumber>1</comnumber><comsettings>9600,n,8,1</comsettings>"
    "<tcpport>4660</tcpport><ipaddress>192.168.0.100</ipaddress><timeoutack>-1</timeoutack>"
    "<timeoutop>-1</timeoutop><maxnreparti>40</maxnreparti></settings>");
const QString kSerialNote = QStringLiteral(
    "I parametri di comunicazione devono coincidere con quelli impostati sulla Stampante, collegare una tastiera "
    "alla stampante fiscale e  verificare i parametri mediante il menù: 7171 + Chiave + funzione 17");
const QString kFlagNote = QStringLiteral("Impostare la flag S14-27 (7171 + C + 14) al valore NO ACK TX/RX P.C.");
}

class TestSetupPrnForm : public QObject
{
    Q_OBJECT
    FakeFPControl fake;
    std::unique_ptr<QTemporaryDir> folder;

    QString settingsPath() const { return folder->filePath(QStringLiteral("Settings.xml")); }
    void writeSettings(const QString &body)
    {
        QFile file(settingsPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("<settings>%1</settings>").arg(body).toUtf8());
    }
    QString readSettings() const
    {
        QFile file(settingsPath());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    // The printer answers ReadPrinterInfo only at this speed.
    void printerAt(const QString &speed)
    {
        fake.handler = [speed](const FakeFPControl::Call &call, FakeFPControl &f) -> std::optional<int16_t> {
            if (call.name == QLatin1String("ReadPrinterInfo"))
                return f.ComSettings().startsWith(speed + QLatin1Char(',')) ? 0 : 3;
            return std::nullopt;
        };
    }

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        SetProgramFolderForTests(folder->path());
        fake = FakeFPControl();
        fake.setUseTcp(0);
        gFPControl = &fake;
        gMaxNReparti = 0;
        MsgBox::startRecording();
    }
    void cleanup()
    {
        MsgBox::stopRecording();
        SetProgramFolderForTests(QString());
    }

    void defaultsWithoutFile()
    {
        SetupPrnForm form;
        QCOMPARE(form.objectName(), QStringLiteral("SetupPrnForm"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Impostazione parametri comunicazione"));
        QVERIFY(form.radioCOM->isChecked());
        QCOMPARE(form.txtCOM->text(), QStringLiteral("1"));
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("9600"));
        QCOMPARE(form.txtParita->text(), QStringLiteral("n"));
        QCOMPARE(form.txtBitDati->text(), QStringLiteral("8"));
        QCOMPARE(form.txtBitStop->text(), QStringLiteral("1"));
        QCOMPARE(form.txtTcpPort->text(), QStringLiteral("4660"));
        QCOMPARE(form.txtIpAddress->text(), QStringLiteral("192.168.0.100"));
        QCOMPARE(form.txtAck->text(), QStringLiteral("-1"));
        QCOMPARE(form.txtOp->text(), QStringLiteral("-1"));
        QCOMPARE(form.TxtMaxNReparti->text(), QStringLiteral("40"));
        QCOMPARE(form.lblControlloPar->text(), kSerialNote);
        QVERIFY(!form.txtIpAddress->isEnabled() && !form.txtTcpPort->isEnabled());
        QVERIFY(form.txtCOM->isEnabled() && form.comboSpeed->isEnabled() && form.btnAutoSet->isEnabled());
        QVERIFY(form.btnAnnulla->isHidden() && form.lblAutoSettings->isHidden());
        QVERIFY(MsgBox::shown().isEmpty());
        QVERIFY(fake.calls.isEmpty());
        QVERIFY(!QFile::exists(settingsPath())); // loading writes nothing
    }

    void tcpFileShowsTheFlagMessageOnce()
    {
        writeSettings(QStringLiteral("<mode>TCP</mode><tcpport>9100</tcpport><ipaddress>10.0.0.7</ipaddress>"
                                     "<maxnreparti>99</maxnreparti>"));
        SetupPrnForm form;
        QVERIFY(form.radioTCP->isChecked());
        QCOMPARE(MsgBox::shownTexts(), QStringList{kFlagNote});
        QCOMPARE(MsgBox::shown().first().icon, QMessageBox::Information);
        QCOMPARE(form.lblControlloPar->text(), kSerialNote + QStringLiteral(".\r\n") + kFlagNote);
        QCOMPARE(form.txtTcpPort->text(), QStringLiteral("9100"));
        QCOMPARE(form.txtIpAddress->text(), QStringLiteral("10.0.0.7"));
        QCOMPARE(form.TxtMaxNReparti->text(), QStringLiteral("99"));
        QVERIFY(form.txtIpAddress->isEnabled());
        QVERIFY(!form.txtCOM->isEnabled() && !form.btnAutoSet->isEnabled() && !form.btnAnnulla->isEnabled());

        // Back to serial by hand: the shorter note, no message.
        form.radioCOM->click();
        QCOMPARE(form.lblControlloPar->text(), kSerialNote);
        QCOMPARE(MsgBox::shown().size(), 1);
        QVERIFY(form.btnAutoSet->isEnabled() && !form.txtIpAddress->isEnabled());
    }

    void fileIsTakenApartFieldByField()
    {
        writeSettings(QStringLiteral("<mode>tcp</mode><comnumber>3</comnumber><comsettings>38400,e,7,2</comsettings>"
                                     "<timeoutack>5</timeoutack><timeoutop>7</timeoutop><maxnreparti>abc</maxnreparti>"));
        SetupPrnForm form;
        QVERIFY(form.radioCOM->isChecked()); // the mode is compared exactly
        QCOMPARE(form.txtCOM->text(), QStringLiteral("3"));
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("38400"));
        QCOMPARE(form.txtParita->text(), QStringLiteral("e"));
        QCOMPARE(form.txtBitDati->text(), QStringLiteral("7"));
        QCOMPARE(form.txtBitStop->text(), QStringLiteral("2"));
        QCOMPARE(form.txtAck->text(), QStringLiteral("5"));
        QCOMPARE(form.txtOp->text(), QStringLiteral("7"));
        QCOMPARE(form.TxtMaxNReparti->text(), QStringLiteral("40"));
    }

    void speedOutsideTheListEndsTheLoad()
    {
        writeSettings(QStringLiteral("<comsettings>115200,n,8,1</comsettings>"));
        try {
            SetupPrnForm form;
            QFAIL("an unknown speed was loaded");
        } catch (const RunTimeError &e) {
            QCOMPARE(e.code(), RunTimeError::Overflow);
        }
    }

    void saveWritesTheDefaultLine()
    {
        fake.setProperty(QStringLiteral("MatricolaPrefix"), QStringLiteral("QO"));
        fake.setProperty(QStringLiteral("MatricolaModel"), QStringLiteral("01"));
        FiscordaForm mainForm(&fake);
        SetupPrnForm form;
        form.btnSave->click();
        QCOMPARE(readSettings(), kDefaultFile);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Parametri impostati!"});
        QCOMPARE(int(gMaxNReparti), 40);
        QCOMPARE(fake.EuroSettings(), 2);
        QCOMPARE(fake.ComSettings(), QStringLiteral("9600,n,8,1"));
        QCOMPARE(int(fake.TimeoutAck()), -1);
        QVERIFY(fake.comOpen);
        QCOMPARE(mainForm.LabelModelloCassa->text(), QStringLiteral("KELVO KX81"));
    }

    void saveSetsTheControlAfterClosingThePort()
    {
        fake.comOpen = true;
        SetupPrnForm form;
        form.radioTCP->click();
        form.txtTcpPort->setText(QStringLiteral("9100"));
        form.txtIpAddress->setText(QStringLiteral("127.0.0.1"));
        form.txtAck->setText(QStringLiteral("4"));
        form.btnSave->click();
        QCOMPARE(fake.callNames().mid(0, 3), (QStringList{"IsComPortOpen", "CloseComPort", "IsTcpOpen"}));
        QVERIFY(fake.tcpOpen && !fake.comOpen);
        QCOMPARE(fake.UseTcp(), 1);
        QCOMPARE(int(fake.TcpPort()), 9100);
        QCOMPARE(fake.IpAddress(), QStringLiteral("127.0.0.1"));
        QCOMPARE(int(fake.TimeoutAck()), 4);
        QVERIFY(readSettings().startsWith(QStringLiteral("<settings><mode>TCP</mode>")));
    }

    void maximumThatIsNoNumberIsDroppedSilently()
    {
        gMaxNReparti = 25;
        SetupPrnForm form;
        form.TxtMaxNReparti->setText(QStringLiteral("abc"));
        form.btnSave->click();
        QVERIFY(!readSettings().contains(QStringLiteral("maxnreparti")));
        QCOMPARE(int(gMaxNReparti), 25);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Parametri impostati!"});

        // And a file written by the form loads back as it was saved.
        form.comboSpeed->setCurrentText(QStringLiteral("57600"));
        form.txtParita->setText(QStringLiteral("o"));
        form.txtBitStop->setText(QStringLiteral("2"));
        form.TxtMaxNReparti->setText(QStringLiteral("60"));
        form.btnSave->click();
        SetupPrnForm again;
        QCOMPARE(again.comboSpeed->currentText(), QStringLiteral("57600"));
        QCOMPARE(again.txtParita->text(), QStringLiteral("o"));
        QCOMPARE(again.txtBitStop->text(), QStringLiteral("2"));
        QCOMPARE(again.TxtMaxNReparti->text(), QStringLiteral("60"));
        QCOMPARE(int(gMaxNReparti), 60);
    }

    void integerFieldThatIsNoNumberEndsTheTest()
    {
        SetupPrnForm form;
        form.txtAck->setText(QStringLiteral("presto"));
        try {
            form.btnTest_Click();
            QFAIL("a time-out that is no number was set");
        } catch (const RunTimeError &e) {
            QCOMPARE(e.code(), RunTimeError::TypeMismatch);
        }
    }

    void testInTcpModeLeavesAutoSetDisabled()
    {
        SetupPrnForm form;
        form.radioTCP->click();
        form.txtTcpPort->setText(QStringLiteral("9100"));
        form.btnTest->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Test OK!"));
        QCOMPARE(fake.UseTcp(), 1);
        QCOMPARE(int(fake.TcpPort()), 9100);
        QCOMPARE(fake.count(QStringLiteral("OpenTcp")), 1);
        QCOMPARE(fake.count(QStringLiteral("ReadDateTime")), 1);
        QVERIFY(form.btnSave->isEnabled() && form.btnEsci->isEnabled() && form.btnTest->isEnabled());
        QVERIFY(!form.btnAutoSet->isEnabled());
        QVERIFY(!QFile::exists(settingsPath())); // a test saves nothing
    }

    void testReportsAFailureAndPassesWhenBusy()
    {
        SetupPrnForm form;
        fake.queueResult(QStringLiteral("ReadDateTime"), 7);
        form.btnTest->click();
        QVERIFY(MsgBox::shownTexts().last().startsWith(QStringLiteral("La stampante entro il timeout")));
        QVERIFY(form.btnAutoSet->isEnabled());

        fake.busy = true;
        fake.clearCalls();
        form.btnTest->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Test OK!"));
        QCOMPARE(fake.count(QStringLiteral("ReadDateTime")), 0);
    }

    void searchTriesTheSpeedsInOrder()
    {
        SetupPrnForm form;
        form.show();
        QStringList tried;
        QList<int> timeouts;
        QStringList progress;
        bool searching = true;
        fake.handler = [&](const FakeFPControl::Call &call, FakeFPControl &f) -> std::optional<int16_t> {
            if (call.name != QLatin1String("ReadPrinterInfo"))
                return std::nullopt;
            tried.append(f.ComSettings());
            timeouts << f.TimeoutAck() << f.TimeoutOp();
            progress.append(form.lblAutoSettings->text());
            searching = searching && form.AutoRunning && form.lblAutoSettings->isVisible()
                        && form.txtBitDati->isHidden() && form.txtBitStop->isHidden() && form.btnAnnulla->isVisible()
                        && !form.btnSave->isEnabled() && !form.btnEsci->isEnabled() && !form.btnTest->isEnabled();
            return f.ComSettings().startsWith(QLatin1String("19200,")) ? 0 : 3;
        };
        form.txtCOM->setText(QStringLiteral("4"));
        form.comboSpeed->setCurrentText(QStringLiteral("57600"));
        form.btnAutoSet->click();
        QCOMPARE(tried, (QStringList{"9600,n,8,1", "19200,n,8,1"}));
        QCOMPARE(timeouts, (QList<int>{2, 2, 2, 2}));
        QCOMPARE(progress, (QStringList{"Autoconfigurazione in corso... sto provando la velocità 9600 ...",
                                        "Autoconfigurazione in corso... sto provando la velocità 19200 ..."}));
        QVERIFY(searching);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Velocità impostata a 19200"});
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("19200"));
        QCOMPARE(int(fake.ComPort()), 4);
        QCOMPARE(int(fake.TimeoutAck()), -1);
        QCOMPARE(int(fake.TimeoutOp()), -1);
        QVERIFY(fake.comOpen);
        QVERIFY(!form.AutoRunning);
        QVERIFY(form.btnAnnulla->isHidden() && form.lblAutoSettings->isHidden() && !form.txtBitDati->isHidden());
        QVERIFY(form.btnSave->isEnabled() && form.btnEsci->isEnabled() && form.btnTest->isEnabled());
        QVERIFY(!QFile::exists(settingsPath())); // the search does not save
    }

    void searchThatFindsNothingStaysAtTheLastSpeed()
    {
        SetupPrnForm form;
        fake.setDefaultResult(QStringLiteral("ReadPrinterInfo"), 3);
        form.btnAutoSet_Click();
        QCOMPARE(fake.count(QStringLiteral("ReadPrinterInfo")), 4);
        QCOMPARE(fake.ComSettings(), QStringLiteral("57600,n,8,1"));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Nessuna velocità impostata!"});
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("9600"));
    }

    void cancelIsSeenAtTheNextPass()
    {
        SetupPrnForm form;
        form.show();
        bool closed = true;
        bool rejected = true;
        fake.handler = [&](const FakeFPControl::Call &call, FakeFPControl &) -> std::optional<int16_t> {
            if (call.name != QLatin1String("ReadPrinterInfo"))
                return std::nullopt;
            if (fake.count(QStringLiteral("ReadPrinterInfo")) > 1)
                return 3; // a second search was started
            // The press arrives as an event while the first attempt waits.
            QTimer::singleShot(0, form.btnAnnulla, &QPushButton::click);
            form.btnAutoSet->click();
            closed = form.close();
            form.reject();
            rejected = !form.isVisible();
            return 3;
        };
        form.btnAutoSet->click();
        QCOMPARE(fake.count(QStringLiteral("ReadPrinterInfo")), 1);
        QVERIFY(!closed && !rejected);
        QCOMPARE(MsgBox::shownTexts(), (QStringList{"Autoimpostazione annullata!", "Nessuna velocità impostata!"}));
        QVERIFY(!form.AutoCancel && !form.AutoRunning);
        QVERIFY(form.close()); // closes again once the search is over
    }

    void startAutoConfigSearchesAndSaves()
    {
        printerAt(QStringLiteral("38400"));
        SetupPrnForm form;
        form.StartAutoConfig();
        QVERIFY(!form.isVisible());
        QCOMPARE(MsgBox::shownTexts(), (QStringList{"Velocità impostata a 38400", "Parametri impostati!"}));
        QVERIFY(readSettings().contains(QStringLiteral("<comsettings>38400,n,8,1</comsettings>")));
        QCOMPARE(fake.ComSettings(), QStringLiteral("38400,n,8,1"));
    }
};

QTEST_MAIN(TestSetupPrnForm)
#include "tst_setupprnform.moc"
