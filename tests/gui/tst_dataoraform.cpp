// The date and time screen in both roles: reading the clock at load, the
// closure that setting the date may demand, the confirmation the technician
// reads, and the commissioning's refusal to go on without a programmed date.
#include "FakeFPControl.h"
#include "app/DataOraForm.h"
#include "ui/MsgBox.h"

#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QTimeEdit>
#include <QTimer>
#include <QtTest>

namespace {
const QString kHint = QStringLiteral(
    "La data non può essere inferiore a quella salvata durante l'ultima chiusura fiscale!");
const QString kClosureQuestion = QStringLiteral(
    "Per programmare la data bisogna fare una chiusura fiscale. Procedo con la chiusura fiscale?");
const QString kDateQuestion = QStringLiteral("Sei sicuro di voler programmare la Data 3/2/2025 e l'ora 9:5");
}

class TestDataOraForm : public QObject
{
    Q_OBJECT
    FakeFPControl fake;

    // A form whose pickers stand at 3 February 2025, 9:05, with the closure
    // state given; the load's messages are forgotten.
    std::unique_ptr<DataOraForm> formAt(int closureState)
    {
        fake.setProperty(QStringLiteral("DateTime"), QStringLiteral("2025-02-03T09:05:41"));
        fake.setProperty(QStringLiteral("ClosureState"), QString::number(closureState));
        auto form = std::make_unique<DataOraForm>();
        MsgBox::clearShown();
        fake.clearCalls();
        return form;
    }

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
        DataOraForm::WizardMode = false;
        MsgBox::startRecording();
    }
    void cleanup() { MsgBox::stopRecording(); }

    void loadAsAFreeTool()
    {
        fake.setProperty(QStringLiteral("DateTime"), QStringLiteral("2024-12-31T23:59:10"));
        DataOraForm form;
        QCOMPARE(form.objectName(), QStringLiteral("DataOraForm"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Cambia Data/Ora"));
        QCOMPARE(form.dtData->date(), QDate(2024, 12, 31));
        QCOMPARE(form.dtOra->time().hour(), 23);
        QCOMPARE(form.dtOra->time().minute(), 59);
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Lettura Data/Ora avvenuta."});
        QCOMPARE(form.btnOk->text(), QStringLiteral("OK"));
        QVERIFY(!form.dateSet);
        QVERIFY(form.Timer1->isActive());
        QCOMPARE(form.Timer1->interval(), 2000);
        QCOMPARE(form.lblDataInf->text(), kHint);

        form.show();
        form.btnOk->click();
        QVERIFY(!form.isVisible()); // free tool: leaves without a date set
    }

    void loadInTheCommissioningShowsTheNoticeForTwoSeconds()
    {
        DataOraForm::WizardMode = true;
        fake.setProperty(QStringLiteral("DateTime"), QStringLiteral("2025-06-01T08:00:00"));
        DataOraForm form;
        QVERIFY(MsgBox::shown().isEmpty());
        QCOMPARE(form.lblDataInf->text(), QStringLiteral("Lettura Data/Ora avvenuta."));
        QCOMPARE(form.btnOk->text(), QStringLiteral("AVANTI"));
        QTRY_COMPARE_WITH_TIMEOUT(form.lblDataInf->text(), kHint, 4000);
        QVERIFY(!form.Timer1->isActive());
    }

    void loadWhenBusyOrWithoutPrinter()
    {
        fake.busy = true;
        {
            DataOraForm form;
            QCOMPARE(MsgBox::shownTexts(), QStringList{"Controllo occupato!"});
            QCOMPARE(fake.count(QStringLiteral("ReadDateTime")), 0);
            QVERIFY(form.Timer1->isActive());
        }
        fake.busy = false;
        MsgBox::clearShown();
        fake.setDefaultResult(QStringLiteral("ReadDateTime"), 1);
        DataOraForm form;
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Registratore non collegato.\r\n"});
        QCOMPARE(form.dtData->date(), QDate::currentDate()); // the picker's own default
    }

    void wizardRefusesToGoOnUntilTheDateIsSet()
    {
        DataOraForm::WizardMode = true;
        auto form = formAt(1);
        form->show();
        form->btnOk->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Impostare la Data/Ora prima di proseguire!"});
        QVERIFY(form->isVisible());

        form->btnSet->click();
        QVERIFY(form->dateSet);
        form->btnOk->click();
        QVERIFY(!form->isVisible());
        QCOMPARE(form->result(), int(QDialog::Accepted));
    }

    void closureStateOneAsksOnlyForTheDate()
    {
        auto form = formAt(1);
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(), (QStringList{kDateQuestion, "Aggiornamento Data/Ora eseguito"}));
        QCOMPARE(MsgBox::shown().first().buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(fake.callNames(), (QStringList{"ReadClosureState", "SetDateTime"}));
        QCOMPARE(fake.callsOf(QStringLiteral("ReadClosureState")).first().args, QStringList{"1"});
        QCOMPARE(fake.callsOf(QStringLiteral("SetDateTime")).first().args, (QStringList{"3", "2", "2025", "9", "5"}));
        QVERIFY(form->dateSet);
    }

    void closureQuestionDeclined()
    {
        auto form = formAt(5);
        MsgBox::queueAnswer(QMessageBox::No);
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{kClosureQuestion});
        QCOMPARE(fake.callNames(), QStringList{"ReadClosureState"});
        QVERIFY(!form->dateSet);
    }

    void closureThatFailsStopsInSilence()
    {
        auto form = formAt(2);
        fake.queueResult(QStringLiteral("FiscalClosure"), -1);
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{kClosureQuestion});
        QCOMPARE(fake.callNames(), (QStringList{"ReadClosureState", "FiscalClosure"}));
        QCOMPARE(fake.callsOf(QStringLiteral("FiscalClosure")).first().args, QStringList{"1"});
        QVERIFY(!form->dateSet);
    }

    void closureMadeThenDateDeclinedStaysMade()
    {
        auto form = formAt(5);
        MsgBox::queueAnswer(QMessageBox::Yes);
        MsgBox::queueAnswer(QMessageBox::No);
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(), (QStringList{kClosureQuestion, kDateQuestion}));
        QCOMPARE(fake.callNames(), (QStringList{"ReadClosureState", "FiscalClosure"}));
        QVERIFY(!form->dateSet);
    }

    void nothingWhenTheStateCannotBeReadOrIsBelowOne()
    {
        auto form = formAt(0);
        form->btnSet->click();
        fake.queueResult(QStringLiteral("ReadClosureState"), 1);
        form->btnSet->click();
        QVERIFY(MsgBox::shown().isEmpty());
        QCOMPARE(fake.callNames(), (QStringList{"ReadClosureState", "ReadClosureState"}));
    }

    void refusedDateIsReportedAndLeavesTheWizardWaiting()
    {
        DataOraForm::WizardMode = true;
        auto form = formAt(1);
        fake.setProperty(QStringLiteral("ErrorCode"), QStringLiteral("9"));
        fake.queueResult(QStringLiteral("SetDateTime"), -1);
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(),
                 (QStringList{kDateQuestion, "Errore del registratore di cassa: DATA INFERIORE.\r\n"}));
        QVERIFY(!form->dateSet);
    }

    void busyAtSettingStopsSilently()
    {
        auto form = formAt(1);
        fake.busy = true;
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{kDateQuestion});
        QCOMPARE(fake.count(QStringLiteral("SetDateTime")), 0);
        QVERIFY(!form->dateSet);
    }

    void confirmationHasNoLeadingZeros()
    {
        auto form = formAt(1);
        form->dtData->setDate(QDate(2031, 11, 28));
        form->dtOra->setTime(QTime(0, 0));
        MsgBox::queueAnswer(QMessageBox::No);
        form->btnSet->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Sei sicuro di voler programmare la Data 28/11/2031 e l'ora 0:0"});
    }
};

QTEST_MAIN(TestDataOraForm)
#include "tst_dataoraform.moc"
