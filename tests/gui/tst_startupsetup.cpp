// SPDX-License-Identifier: GPL-3.0-or-later
// Start-up as the technician meets it, and the main form's roads to the setup
// and the date screen.
#include "FormTestEnv.h"
#include "app/DataOraForm.h"
#include "app/FiscordaForm.h"
#include "app/Main.h"
#include "app/SingleInstance.h"
#include "printer/SharedState.h"

#include <QLabel>
#include <QLockFile>
#include <QPushButton>
#include <QtTest>

class TestStartupSetup : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    QStringList modals; // "form:button" of each modal form that came up

    void leaveWhenShown(const QString &form, const QString &button)
    {
        whenModal(form, [=, this](QWidget *w) {
            modals << w->objectName() + ":" + w->findChild<QPushButton *>(button)->text();
            w->findChild<QPushButton *>(button)->click();
            w->close();
        });
    }
    std::unique_ptr<FiscordaForm> start()
    {
        leaveWhenShown("SetupPrnForm", "btnEsci");
        return std::unique_ptr<FiscordaForm>(Main(&env->fake));
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        gMaxNReparti = 0;
        modals.clear();
    }
    void cleanup() { env.reset(); }

    void noFileNoPrinter()
    {
        env->fake.comPortOpens = false;
        auto form = start();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Registratore non collegato.\r\n"});
        QCOMPARE(modals, QStringList{"SetupPrnForm:ESCI"});
        QVERIFY(form->isVisible());
        QCOMPARE(form->windowTitle(), QStringLiteral("Fiscorda - 1.0.48"));
        QCOMPARE(form->LabelModelloCassa->text(), QString());
        QCOMPARE(gMaxNReparti, 0); // no file: left as it was
    }

    void settingsAtTheStart()
    {
        env->fake.setProperty("MatricolaPrefix", "QM");
        env->writeSettings("<mode>tcp</mode><comnumber>2</comnumber><maxnreparti>abc</maxnreparti>");
        auto form = start();
        QVERIFY(MsgBox::shown().isEmpty() && modals.isEmpty());
        QCOMPARE(form->LabelModelloCassa->text(), QStringLiteral("KELVO KX90 II"));
        QCOMPARE(env->fake.callNames().mid(0, 4), QStringList({"OpenComPort", "IsComPortOpen", "IsComPortOpen", "ReadDateTime"}));
        QVERIFY(env->fake.ComPort() == 2 && gMaxNReparti == 40); // lower-case "tcp" is the serial port
    }

    void secondInstanceRefusedUntouched()
    {
        SingleInstance::releaseForTests();
        QLockFile other(SingleInstance::lockPath());
        QVERIFY(other.tryLock(0));
        QVERIFY(!start());
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programma Fiscorda già in esecuzione"});
        QVERIFY(env->fake.calls.isEmpty());
    }

    void mainFormRoads()
    {
        auto form = start();
        leaveWhenShown("SetupPrnForm", "btnEsci");
        form->mSetupPrn->trigger();
        DataOraForm::WizardMode = false;
        leaveWhenShown("DataOraForm", "btnOk"); // refused without a date; the close box abandons
        form->btnInstall->click();
        QCOMPARE(modals, QStringList({"SetupPrnForm:ESCI", "DataOraForm:AVANTI"}));
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Impostare la Data/Ora prima di proseguire!"));
    }
};

QTEST_MAIN(TestStartupSetup)
#include "tst_startupsetup.moc"
