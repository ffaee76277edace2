// SPDX-License-Identifier: GPL-3.0-or-later
// The journal screens against the emulated printer over the real control.
// (A read cut in the middle, the lines and the file of a selection: the
// screen's test; a printer off: the control's; reads by date and by number
// as the printer serves them: the control's end-to-end test.)
#include "DgfeSelection.h"
#include "EmulatorTestEnv.h"
#include "app/FiscordaForm.h"
#include "emulator/ConsoleCommands.h"
#include "journal/GiornaleDGFEForm.h"
#include "journal/GiornaleStepForm.h"

#include <QApplication>
#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

class TestJournalEmulator : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;
    std::optional<DgfeSelection> selection;
    QDateTime clock;

    void connectTcp()
    {
        env->control->setTimeoutAck(1);
        QVERIFY(env->connectTcp());
    }
    void run(const char *name, const QList<QByteArray> &args)
    {
        const Reply r = env->run(name, args);
        QVERIFY2(r.result == 0, name);
    }
    void receipt(const QDateTime &when, const QByteArray &description)
    {
        clock = when;
        run("SellReparto", {"1", "1", description, "12000", "5", "1"});
        run("PayReceipt", {"1", "", "0", "0", "0", "1"});
    }
    const ElectronicJournal &journal() { return env->emu->model().memory().journal; }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        clock = QDateTime(QDate(2026, 3, 9), QTime(9, 0));
        EmulatorConfig config;
        config.paperPath.clear();
        QVERIFY(env->start(config));
        env->emu->model().context().systemClock = [this] { return clock; }; // the test's clock
        selection.emplace();
    }
    void cleanup()
    {
        selection.reset();
        env.reset();
    }

    // The technician's roads from the main form: "Giornale Elettronico DGFE",
    // "Lettura DGFE", a day, "Su video", "INIZIO"; then "Cambio DGFE".
    void roadsFromTheMainForm()
    {
        receipt(QDateTime(QDate(2026, 3, 10), QTime(8, 0)), "UNO");
        const QStringList tenth = journal().linesByDate(QDate(2026, 3, 10), QDate(2026, 3, 10));
        connectTcp();
        FiscordaForm mainForm(&*env->control);
        mainForm.show();

        QStringList read, seen;
        whenModal("GiornaleDGFEForm", [&](QWidget *w) {
            auto *entry = static_cast<GiornaleDGFEForm *>(w);
            whenModal("DGFEForm", [&](QWidget *w) {
                auto *dates = static_cast<DGFEForm *>(w);
                dates->dtInizio->setDate(QDate(2026, 3, 10));
                dates->dtFine->setDate(QDate(2026, 3, 10));
                whenModal("DGFECrtForm", [&](QWidget *w) {
                    auto *screen = static_cast<DGFECrtForm *>(w);
                    screen->Command1->click();
                    read = screen->lines();
                    screen->btnOk->click();
                });
                dates->btnDateCrt->click();
                dates->btnOk->click();
            });
            entry->btnRead->click();

            // The wizard's steps against a printer switched off are its own
            // test; the format on this printer is the card conditions' below.
            whenModal("GiornaleStepForm", [&](QWidget *w) {
                seen << static_cast<GiornaleStepForm *>(w)->lblDGFE->text();
                w->close();
            });
            entry->btnChange->click();
            entry->btnOK->click();
        });
        mainForm.btnDGFE->click();

        QCOMPARE(read, tenth);
        QCOMPARE(seen, QStringList{"2"}); // the number of the card in the printer
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void printerRefusesABadSelection_data()
    {
        QTest::addColumn<bool>("number");
        QTest::addColumn<QString>("detail");
        QTest::newRow("dates upside down") << false << "DATA ERRATA";
        QTest::newRow("first receipt above the last") << true << "VALORE ERRATO";
    }
    void printerRefusesABadSelection()
    {
        QFETCH(bool, number);
        receipt(QDateTime(QDate(2026, 3, 10), QTime(8, 0)), "UNO");
        connectTcp();
        if (number)
            selection->byNumber(QDate(2026, 3, 10), "3", "1");
        else
            selection->byDate(QDate(2026, 3, 11), QDate(2026, 3, 10));
        DGFECrtForm form;
        form.Command1->click();
        QCOMPARE(form.ReadResult, int16_t(-1));
        QCOMPARE(MsgBox::shownTexts().size(), 1);
        QFETCH(QString, detail);
        QVERIFY2(MsgBox::shownTexts().first().contains(detail), qPrintable(MsgBox::shownTexts().first()));
        QCOMPARE(listOf(form), QStringList{QString()}); // what the line property held: nothing yet
        QVERIFY(form.ReadEnded && form.btnSalvaSuFile->isEnabled());
    }

    // The card conditions a technician meets, thrown from the console: a full
    // card refuses receipts, a card to format or of another fiscal memory
    // reads as empty, and the wizard's format starts a new journal.
    void cardConditionsAndFormat_data()
    {
        QTest::addColumn<QString>("condition");
        QTest::addColumn<int>("formatResult");
        QTest::addColumn<int>("newNumber");
        QTest::newRow("full") << "full" << 0 << 2;
        QTest::newRow("to format") << "toformat" << 0 << 2;
        QTest::newRow("of another fiscal memory") << "othermf" << -1 << 1;
    }
    void cardConditionsAndFormat()
    {
        QFETCH(QString, condition);
        QFETCH(int, formatResult);
        QFETCH(int, newNumber);
        receipt(QDateTime(QDate(2026, 3, 10), QTime(8, 0)), "UNO");
        clock = QDateTime(QDate(2026, 3, 10), QTime(20, 0));
        run("FiscalClosure", {"1"});
        ConsoleCommands console(*env->emu);
        QCOMPARE(console.run("journal " + condition), "journal " + condition);
        QCOMPARE(env->emu->execute("SellReparto", {"1", "1", "DUE", "12000", "5", "1"}).errorCode(), 1);
        connectTcp();

        selection->byDate(QDate(2026, 3, 10), QDate(2026, 3, 10));
        DGFECrtForm read;
        read.Command1->click();
        if (condition == "full")
            QVERIFY(read.lines().filter("UNO").size() == 1);
        else
            QCOMPARE(read.lines(), QStringList{"Nessuna operazione!"});

        GiornaleStepForm wizard;
        QCOMPARE(wizard.lblDGFE->text(), QStringLiteral("2"));
        whenModal("FpMonitorForm", [](QWidget *w) { w->close(); });
        wizard.btnFormat->click();
        QCOMPARE(wizard.DgfeFormatted, formatResult == 0);
        QCOMPARE(journal().number, newNumber);
        if (formatResult == 0) {
            QCOMPARE(wizard.lblNewDgfe->text(), QString::number(newNumber));
            // A new, empty journal but for its first slip; receipts go in again.
            QCOMPARE(journal().entries().size(), 1);
            QCOMPARE(env->emu->execute("SellReparto", {"1", "1", "DUE", "12000", "5", "1"}).result, 0);
        } else {
            QVERIFY(MsgBox::shownTexts().last().contains("NON POSSIBILE"));
        }
    }
};

QTEST_MAIN(TestJournalEmulator)
#include "tst_journalemulator.moc"
