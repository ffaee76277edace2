// SPDX-License-Identifier: GPL-3.0-or-later
// The decommissioning wizard: its tab rules, the printer steps, the screens
// of the sixth step.
#include "FormTestEnv.h"
#include "decommissioning/RemoveStepForm.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "printer/SharedState.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

static const QString kOneStep = "Puoi avanzare un passo alla volta!";
static const QString kClosure = "Fare la chiusura!";

class TestRemoveStepForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

    // Walks to a tab with every demand met, then sets the flags as asked.
    static void standOn(RemoveStepForm &form, int tab, bool closure, bool memory, bool module)
    {
        form.ClosureDone = form.FiscalMemoryPrinted = form.ModuleOpened = true;
        while (form.SSTab1->currentIndex() < tab)
            form.btnFwd->click();
        form.ClosureDone = closure;
        form.FiscalMemoryPrinted = memory;
        form.ModuleOpened = module;
        MsgBox::clearShown();
    }

private Q_SLOTS:
    void init() { env.emplace(FormTestEnv::Options{.printers = QList<SystemPrinters::Printer>()}); }
    void cleanup() { env.reset(); }

    void moves_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<QString>("flags"); // c closure, m memory, o module
        QTest::addColumn<QString>("move");  // fwd, back, or the tab clicked
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("stays");
        QTest::newRow("closure missing, forward") << 2 << "mo" << "fwd" << QStringList{kClosure} << 2;
        QTest::newRow("closure missing, back too") << 2 << "mo" << "back" << QStringList{kClosure} << 2;
        QTest::newRow("closure missing, jump") << 2 << "mo" << "6" << QStringList{kClosure} << 2;
        QTest::newRow("closure done, jump") << 2 << "cmo" << "6" << QStringList{kOneStep} << 2;
        QTest::newRow("jump from the first") << 0 << "" << "3" << QStringList{kOneStep} << 0;
        QTest::newRow("jump back") << 4 << "cmo" << "1" << QStringList{kOneStep} << 4;
        QTest::newRow("memory missing") << 4 << "co" << "fwd" << QStringList{"Stampa la memoria fiscale!"} << 4;
        QTest::newRow("module missing") << 5 << "cm" << "fwd" << QStringList{"Stampa modulo!"} << 5;
        QTest::newRow("module opened") << 5 << "cmo" << "fwd" << QStringList{} << 6;
        QTest::newRow("free step, by its tab") << 3 << "" << "4" << QStringList{} << 4;
        QTest::newRow("back to the first") << 1 << "" << "back" << QStringList{} << 0;
    }
    void moves()
    {
        QFETCH(int, from);
        QFETCH(QString, flags);
        QFETCH(QString, move);
        RemoveStepForm form;
        standOn(form, from, flags.contains('c'), flags.contains('m'), flags.contains('o'));
        QCOMPARE(form.SSTab1->currentIndex(), from);
        if (move == "fwd")
            form.btnFwd->click();
        else if (move == "back")
            form.btnBack->click();
        else
            form.SSTab1->setCurrentIndex(move.toInt());
        QTEST(MsgBox::shownTexts(), "texts");
        QTEST(form.SSTab1->currentIndex(), "stays");
        QVERIFY(!form.StepRefused);
        // The buttons follow the tab the strip stands on.
        const int tab = form.SSTab1->currentIndex();
        QCOMPARE(form.btnBack->isEnabled(), tab != 0);
        QCOMPARE(form.btnFwd->text(), tab == 6 ? QStringLiteral("FINE") : QStringLiteral("AVANTI"));
    }

    void finishClosesInOnePress()
    {
        RemoveStepForm form;
        form.show();
        standOn(form, 6, true, true, true);
        form.ClosureDone = false; // nothing checks any more
        form.btnFwd->click();
        QCOMPARE(form.result(), int(QDialog::Accepted));
        QVERIFY(!form.isVisible());
        QVERIFY(MsgBox::shownTexts().isEmpty());
    }

    void printerSteps_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("busy");
        QTest::addColumn<QList<int>>("results"); // one per press
        QTest::addColumn<bool>("done");
        QTest::addColumn<int>("sent");
        QTest::addColumn<int>("messages");
        QTest::newRow("closure") << "btnZChiusura" << "FiscalClosure" << false << QList<int>{0} << true << 1 << 0;
        QTest::newRow("closure, then a failure") << "btnZChiusura" << "FiscalClosure" << false << QList<int>{0, -1} << false << 2 << 1;
        QTest::newRow("closure, busy control") << "btnZChiusura" << "FiscalClosure" << true << QList<int>{-1} << true << 0 << 0;
        QTest::newRow("memory fails") << "btnPrint" << "PrintFiscalMemory" << false << QList<int>{-1} << false << 1 << 1;
        QTest::newRow("memory, twice") << "btnPrint" << "PrintFiscalMemory" << false << QList<int>{0, 0} << true << 2 << 0;
        QTest::newRow("memory, busy control") << "btnPrint" << "PrintFiscalMemory" << true << QList<int>{-1} << true << 0 << 0;
    }
    void printerSteps()
    {
        QFETCH(QString, button);
        QFETCH(QString, command);
        QFETCH(bool, busy);
        QFETCH(QList<int>, results);
        RemoveStepForm form;
        env->fake.busy = busy;
        env->fake.setProperty("ErrorCode", "23");
        for (int r : results) {
            env->fake.queueResult(command, int16_t(r));
            form.findChild<QPushButton *>(button)->click();
        }
        const bool done = command == "FiscalClosure" ? form.ClosureDone : form.FiscalMemoryPrinted;
        QTEST(done, "done");
        QTEST(int(env->fake.count(command)), "sent");
        QTEST(int(MsgBox::shownTexts().size()), "messages");
        if (env->fake.count(command))
            QCOMPARE(env->fake.callsOf(command).first().args, QStringList{"1"});
    }

    // A stray Enter must never run a fiscal closure or a memory print.
    void enterPressesNothing()
    {
        RemoveStepForm form;
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        standOn(form, 2, false, true, true);
        form.SSTab1->tabBar()->setFocus();
        QTest::keyClick(form.SSTab1->tabBar(), Qt::Key_Return);
        QCOMPARE(env->fake.count("FiscalClosure"), 0);
        QCOMPARE(form.SSTab1->currentIndex(), 2);
        QVERIFY(MsgBox::shownTexts().isEmpty());
    }

    void sixthStepScreens()
    {
        InstallLibrettoFiscaleForm::SampleMode = false;
        RemoveStepForm form;
        QStringList seen;
        whenModal("InstallLibrettoFiscaleForm", [&](QWidget *w) {
            auto *booklet = static_cast<InstallLibrettoFiscaleForm *>(w);
            seen << booklet->lblTitolo->text();
            booklet->btnOK->click(); // only closes: no declaration behind it
        });
        form.btnSample->click();
        QVERIFY(!form.ModuleOpened); // not demanded, not counted
        whenModal("PrintFoglioForm", [&](QWidget *w) {
            seen << QString::number(PrintFoglioForm::PrintMode) + static_cast<PrintFoglioForm *>(w)->txtNCopie->text();
            w->close(); // nothing printed
        });
        form.btnPrintMod->click();
        QCOMPARE(seen, QStringList({"Aggiungere DISINSTALLATO IN DATA:________", "22"}));
        QVERIFY(InstallLibrettoFiscaleForm::SampleMode);
        QVERIFY(form.ModuleOpened);
    }
};

QTEST_MAIN(TestRemoveStepForm)
#include "tst_removestepform.moc"
