// SPDX-License-Identifier: GPL-3.0-or-later
// The core screens against the emulated printer, over the real control.
#include "EmulatorTestEnv.h"
#include "app/FiscordaForm.h"
#include "app/Main.h"
#include "app/SetupPrnForm.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

class TestScreensEmulator : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        EmulatorConfig config;
        config.model = EmulatorConfig::Model::KX81;
        QVERIFY(env->start(config));
    }
    void cleanup() { env.reset(); }

    void speedSearchOnAPseudoTerminal()
    {
        QVERIFY(env->emu->openPty(env->folder.path(), 1, "19200,n,8,1"));
        QStringList speeds; // the line settings under which requests went out
        KelvoProtocolControl &control = *env->control;
        control.setTrafficObserver([&](KelvoProtocolControl::Direction d, const QByteArray &) {
            if (d == KelvoProtocolControl::Direction::Sent && speeds.value(speeds.size() - 1) != control.ComSettings())
                speeds << control.ComSettings();
        });
        SetupPrnForm form;
        form.btnAutoSet->click();
        QCOMPARE(speeds, QStringList({"9600,n,8,1", "19200,n,8,1"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Velocità impostata a 19200"});
        QCOMPARE(form.comboSpeed->currentText(), QStringLiteral("19200"));
        QCOMPARE(QList<int>({control.TimeoutAck(), control.TimeoutOp()}), QList<int>({-1, -1}));
    }

    void setupSavedFromTheMainForm()
    {
        QFile(env->folder.filePath("COM1")).open(QIODevice::WriteOnly); // a COM1 that is no serial port
        whenModal("SetupPrnForm", [](QWidget *w) { w->close(); });
        std::unique_ptr<FiscordaForm> mainForm(Main(&*env->control));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Registratore non collegato.\r\n"});

        QVERIFY(env->connectTcp());
        const quint16 port = env->emu->tcpPort();
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
