// SPDX-License-Identifier: GPL-3.0-or-later
// The communication setup: what it loads, what its buttons do to the control
// and to Settings.xml, and the speed search with its order, its cancel and
// its refusal to be closed.
#include "FormTestEnv.h"
#include "app/FiscordaForm.h"
#include "app/SetupPrnForm.h"
#include "printer/SharedState.h"
#include "settings/RunTimeError.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

class TestSetupPrnForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    QStringList tried; // serial settings and time-outs of each attempt

    static QStringList fields(const SetupPrnForm &f)
    {
        return {f.txtCOM->text(), f.comboSpeed->currentText(), f.txtParita->text(), f.txtBitDati->text(),
                f.txtBitStop->text(), f.txtTcpPort->text(), f.txtIpAddress->text(), f.txtAck->text(),
                f.txtOp->text(), f.TxtMaxNReparti->text()};
    }
    void printerAt(const QString &speed)
    {
        env->fake.handler = [this, speed](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            if (c.name != "ReadPrinterInfo")
                return std::nullopt;
            tried << QStringLiteral("%1 %2%3").arg(f.ComSettings()).arg(f.TimeoutAck()).arg(f.TimeoutOp());
            return f.ComSettings().startsWith(speed + ",") ? 0 : 3;
        };
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        gMaxNReparti = 0;
        tried.clear();
    }
    void cleanup() { env.reset(); }

    void load()
    {
        SetupPrnForm defaults;
        QVERIFY(defaults.radioCOM->isChecked() && defaults.btnAutoSet->isEnabled() && !defaults.txtTcpPort->isEnabled());
        QCOMPARE(fields(defaults), QStringList({"1", "9600", "n", "8", "1", "4660", "192.168.0.100", "-1", "-1", "40"}));
        QVERIFY(MsgBox::shown().isEmpty());

        env->writeSettings("<mode>TCP</mode><comsettings>38400,e,7,2</comsettings><maxnreparti>99</maxnreparti>");
        SetupPrnForm tcp;
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Impostare la flag S14-27 (7171 + C + 14) al valore NO ACK TX/RX P.C."});
        QCOMPARE(MsgBox::shown().first().icon, QMessageBox::Information);
        QVERIFY(tcp.lblControlloPar->text().contains("e  verificare i parametri mediante il menù: 7171 + Chiave + funzione 17.\r\nImpostare"));
        QVERIFY(tcp.txtTcpPort->isEnabled() && !tcp.btnAutoSet->isEnabled() && !tcp.comboSpeed->isEnabled());
        QCOMPARE(fields(tcp).mid(1, 4) << tcp.TxtMaxNReparti->text(), QStringList({"38400", "e", "7", "2", "99"}));

        env->writeSettings("<comsettings>115200,n,8,1</comsettings>");
        try {
            SetupPrnForm unknownSpeed;
            QFAIL("a speed outside the list was loaded");
        } catch (const RunTimeError &e) {
            QCOMPARE(e.code(), RunTimeError::Overflow);
        }
    }

    void save()
    {
        env->fake.setProperty("MatricolaPrefix", "QO");
        FiscordaForm mainForm(&env->fake);
        SetupPrnForm form;
        form.btnSave->click();
        QCOMPARE(env->readSettings(), QStringLiteral(
            "<settings><mode>COM</mode><comnumber>1</comnumber><comsettings>9600,n,8,1</comsettings><tcpport>4660</tcpport>"
            "<ipaddress>192.168.0.100</ipaddress><timeoutack>-1</timeoutack><timeoutop>-1</timeoutop>"
            "<maxnreparti>40</maxnreparti></settings>"));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Parametri impostati!"});
        QVERIFY(gMaxNReparti == 40 && env->fake.EuroSettings() == 2 && env->fake.comOpen);
        QCOMPARE(mainForm.LabelModelloCassa->text(), QStringLiteral("KELVO KX81"));

        form.TxtMaxNReparti->setText("abc"); // dropped without a word
        form.btnSave->click();
        QVERIFY(env->readSettings().contains("<maxnreparti>40<") && gMaxNReparti == 40);
        QCOMPARE(MsgBox::shownTexts().size(), 2);
    }

    void secondPressWhileACommandWaits_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        for (const char *first : {"btnSave", "btnTest", "btnAutoSet"})
            for (const char *second : {"btnSave", "btnTest", "btnAutoSet"})
                QTest::addRow("%s then %s", first, second) << first << second;
    }
    void secondPressWhileACommandWaits()
    {
        // The control waits for the printer with the window alive: a press
        // then comes in while the first command is under way.
        QFETCH(QString, first);
        QFETCH(QString, second);
        auto press = [&](bool again) -> QStringList {
            SetupPrnForm form;
            bool pressed = !again;
            env->fake.handler = [&](const FakeFPControl::Call &, FakeFPControl &) -> std::optional<int16_t> {
                if (!pressed) {
                    pressed = true;
                    form.findChild<QPushButton *>(second)->click();
                }
                return std::nullopt;
            };
            env->fake.comOpen = false;
            env->fake.clearCalls();
            MsgBox::clearShown();
            form.findChild<QPushButton *>(first)->click();
            env->fake.handler = nullptr;
            return QStringList{pressed ? "" : "never pressed"} + env->fake.callNames() + MsgBox::shownTexts();
        };
        const QStringList alone = press(false);
        QCOMPARE(press(true), alone);
        QVERIFY(env->fake.comOpen);
    }

    void testInTcpMode()
    {
        SetupPrnForm form;
        form.radioTCP->click();
        form.txtTcpPort->setText("9100");
        form.btnTest->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Test OK!"));
        QCOMPARE(env->fake.callNames().filter("Tcp"), QStringList({"IsTcpOpen", "OpenTcp"}));
        QCOMPARE(env->fake.TcpPort(), 9100);
        QVERIFY(form.btnSave->isEnabled() && form.btnTest->isEnabled() && !form.btnAutoSet->isEnabled());
        QVERIFY(!QFile::exists(env->settingsPath())); // a test saves nothing
    }

    void searchOrder()
    {
        printerAt("19200");
        SetupPrnForm form;
        form.comboSpeed->setCurrentText("57600");
        form.btnAutoSet->click();
        QCOMPARE(tried, QStringList({"9600,n,8,1 22", "19200,n,8,1 22"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Velocità impostata a 19200"});
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("19200"));
        QCOMPARE(QList<int>({env->fake.TimeoutAck(), env->fake.TimeoutOp()}), QList<int>({-1, -1}));
        QVERIFY(!form.AutoRunning && form.btnAnnulla->isHidden() && !form.txtBitDati->isHidden());

        printerAt("none");
        form.StartAutoConfig(); // searches all four, then saves the last tried
        QCOMPARE(tried.size(), 6);
        QCOMPARE(MsgBox::shownTexts().mid(1), QStringList({"Nessuna velocità impostata!", "Parametri impostati!"}));
        QVERIFY(env->readSettings().contains("<comsettings>9600,n,8,1<"));
    }

    void searchCancel()
    {
        SetupPrnForm form;
        form.show();
        bool refused = true;
        env->fake.handler = [&](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            if (c.name == "ReadPrinterInfo" && f.count("ReadPrinterInfo") == 1) {
                // Events that come in while the first attempt waits.
                QTimer::singleShot(0, form.btnAnnulla, &QPushButton::click);
                form.btnAutoSet->click(); // no second search
                refused = !form.close() && form.lblAutoSettings->isVisible();
            }
            return 3;
        };
        form.btnAutoSet->click();
        QCOMPARE(env->fake.count("ReadPrinterInfo"), 1);
        QVERIFY(refused);
        QCOMPARE(MsgBox::shownTexts(), QStringList({"Autoimpostazione annullata!", "Nessuna velocità impostata!"}));
        QVERIFY(!form.AutoCancel && form.close());
    }
};

QTEST_MAIN(TestSetupPrnForm)
#include "tst_setupprnform.moc"
