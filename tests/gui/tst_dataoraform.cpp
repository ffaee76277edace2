// SPDX-License-Identifier: GPL-3.0-or-later
// The date screen: the clock read in both roles, the closure a date may
// demand, the confirmation, the commissioning's refusal to go on.
#include "FormTestEnv.h"
#include "app/DataOraForm.h"

#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

static const QString kClosure = "Per programmare la data bisogna fare una chiusura fiscale. Procedo con la chiusura fiscale?";
static const QString kConfirm = "Sei sicuro di voler programmare la Data 3/2/2025 e l'ora 9:5";
static const QString kDone = "Aggiornamento Data/Ora eseguito";

class TestDataOraForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        env->fake.setProperty("DateTime", "2025-02-03T09:05:41");
        DataOraForm::WizardMode = false;
    }
    void cleanup() { env.reset(); }

    void loadInBothRoles()
    {
        DataOraForm tool;
        QCOMPARE(tool.dtData->date(), QDate(2025, 2, 3));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Lettura Data/Ora avvenuta."});
        QCOMPARE(tool.btnOk->text(), QStringLiteral("OK"));

        DataOraForm::WizardMode = true;
        DataOraForm wizard; // the notice goes to the hint, for two seconds
        QCOMPARE(MsgBox::shownTexts().size(), 1);
        QCOMPARE(wizard.btnOk->text() + "|" + wizard.lblDataInf->text(), QStringLiteral("AVANTI|Lettura Data/Ora avvenuta."));
        QCOMPARE(wizard.Timer1->interval(), 2000);
        QTRY_VERIFY_WITH_TIMEOUT(wizard.lblDataInf->text().startsWith("La data non può essere inferiore"), 3000);
    }

    void closureQuestion_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("answers"); // y or n, one per question
        QTest::addColumn<int>("closureResult");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("calls");
        QTest::newRow("declined") << 5 << "n" << 0 << QStringList{kClosure} << "ReadClosureState";
        QTest::newRow("closure fails") << 2 << "y" << -1 << QStringList{kClosure} << "ReadClosureState FiscalClosure";
        QTest::newRow("closure made, date declined")
            << 5 << "yn" << 0 << QStringList{kClosure, kConfirm} << "ReadClosureState FiscalClosure";
        QTest::newRow("closure made, date set") << 5 << "yy" << 0 << QStringList{kClosure, kConfirm, kDone}
                                                << "ReadClosureState FiscalClosure SetDateTime";
        QTest::newRow("no closure needed") << 1 << "y" << 0 << QStringList{kConfirm, kDone} << "ReadClosureState SetDateTime";
        QTest::newRow("state below one") << 0 << "" << 0 << QStringList{} << "ReadClosureState";
    }
    void closureQuestion()
    {
        QFETCH(int, state);
        QFETCH(QString, answers);
        QFETCH(int, closureResult);
        env->fake.setProperty("ClosureState", QString::number(state));
        DataOraForm form;
        MsgBox::clearShown();
        env->fake.clearCalls();
        for (QChar a : answers)
            MsgBox::queueAnswer(a == 'y' ? QMessageBox::Yes : QMessageBox::No);
        env->fake.queueResult("FiscalClosure", int16_t(closureResult));
        form.btnSet->click();
        QTEST(MsgBox::shownTexts(), "texts");
        QTEST(env->fake.callNames().join(' '), "calls");
        QCOMPARE(form.dateSet, env->fake.count("SetDateTime") == 1);
        if (form.dateSet)
            QCOMPARE(env->fake.callsOf("SetDateTime").first().args, QStringList({"3", "2", "2025", "9", "5"}));
    }

    void wizardGoesOnOnlyWithADateSet()
    {
        DataOraForm::WizardMode = true;
        env->fake.setProperty("ClosureState", "1");
        DataOraForm form;
        form.show();
        form.btnOk->click();
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Impostare la Data/Ora prima di proseguire!"));
        env->fake.setProperty("ErrorCode", "9");
        env->fake.queueResult("SetDateTime", -1);
        form.btnSet->click(); // refused by the printer: still no way forward
        QCOMPARE(MsgBox::shownTexts().last(), QStringLiteral("Errore del registratore di cassa: DATA INFERIORE.\r\n"));
        form.btnOk->click();
        QVERIFY(form.isVisible());
        form.btnSet->click();
        // The step that follows, in its mode: tst_commissioningchain.
        whenModal(QStringLiteral("InstallHeaderForm"), [](QWidget *w) { w->close(); });
        form.btnOk->click();
        QVERIFY(!form.isVisible());
    }
};

QTEST_MAIN(TestDataOraForm)
#include "tst_dataoraform.moc"
