// SPDX-License-Identifier: GPL-3.0-or-later
// The journal screens on a scripted control: the exact calls of a read and of
// the print roads, the end of a selection, pause and stop between two lines,
// failures in the middle, bad receipt numbers, the close question and the
// bytes of the saved file.
#include "DgfeSelection.h"
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "ui/FileDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestDgfeForms : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    std::optional<DgfeSelection> selection;
    QStringList journal;          // what the printer serves
    QList<int> timeoutAtCall;     // TimeoutOp as each read call found it
    int served = 0;

    // The printer's side of the read: the first call opens the selection,
    // each call gives the next line, the last one with 3102.
    void serve(const QStringList &lines)
    {
        journal = lines;
        env->fake.handler = [this](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            if (!c.name.startsWith("ReadDgfeBy"))
                return std::nullopt;
            timeoutAtCall << f.TimeoutOp();
            f.setTimeoutOp(-1);
            if (c.args.last() == "1")
                served = 0;
            if (journal.isEmpty()) {
                f.setProperty("DgfeLine", "STALE");
                f.setProperty("InfoCode", "3102");
                return 0;
            }
            f.setProperty("DgfeLine", journal.value(served));
            f.setProperty("InfoCode", served >= journal.size() - 1 ? "3102" : "0");
            ++served;
            return 0;
        };
    }
    static QStringList lines(int n)
    {
        QStringList out;
        for (int i = 1; i <= n; ++i)
            out << QStringLiteral("RIGA %1").arg(i);
        return out;
    }

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.fileDialogs = true, .italian = true});
        selection.emplace();
        timeoutAtCall.clear();
        env->fake.setMatricola("QN");
    }
    void cleanup()
    {
        selection.reset();
        env.reset();
    }

    void loadShowsTheSelection()
    {
        selection->byNumber(QDate(2006, 7, 4), "3", "12");
        DGFECrtForm number;
        QCOMPARE(QStringList({number.lblDataIni->text(), number.lblDataIni2->text(), number.lblDataFin->text(),
                              number.lblDataFin2->text(), number.lblScontFin->text(), number.lblScontFin2->text()}),
                 QStringList({"Scontrino iniziale:", "3", "Scontrino finale:", "12", "Data:", "4/7/2006"}));
        selection->byDate(QDate(2026, 1, 2), QDate(2026, 11, 23));
        DGFECrtForm date;
        QCOMPARE(QStringList({date.lblDataIni->text(), date.lblDataIni2->text(), date.lblDataFin->text(),
                              date.lblDataFin2->text(), date.lblScontFin->text(), date.lblScontFin2->text()}),
                 QStringList({"Data iniziale:", "2/1/2026", "Data finale:", "23/11/2026", "", ""}));
        QVERIFY(!date.CmdPausa->isEnabled() && !date.CmdStop->isEnabled() && !date.btnSalvaSuFile->isEnabled());
        QVERIFY(QFontInfo(date.ListDGFE->font()).fixedPitch());
        QVERIFY(env->fake.calls.isEmpty()); // nothing is read before INIZIO
    }

    void wholeSelectionInOrder_data()
    {
        QTest::addColumn<bool>("number");
        QTest::addColumn<int>("n");
        QTest::newRow("date, 5 lines") << false << 5;
        QTest::newRow("date, 2 lines") << false << 2;
        QTest::newRow("number, 4 lines") << true << 4;
        // An empty selection rests on the code alone: the line it carries is no data.
        QTest::newRow("date, nothing") << false << 0;
    }
    void wholeSelectionInOrder()
    {
        QFETCH(bool, number);
        QFETCH(int, n);
        if (number)
            selection->byNumber(QDate(2026, 3, 10), "2", "1,5"); // 1,5 goes as 2, halves to even
        else
            selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 31));
        serve(lines(n));
        DGFECrtForm form;
        form.Command1->click();
        // Each line once, the end line included.
        QCOMPARE(listOf(form), n ? lines(n) : QStringList{"Nessuna operazione!"});
        QCOMPARE(form.ListDGFE->currentRow(), form.ListDGFE->count() - 1);
        const QString sel = number ? "ReadDgfeByNumber(1,10,3,2026,2,2" : "ReadDgfeByDate(1,1,3,2026,31,3,2026";
        QStringList expected{sel + ",1)"};
        for (int i = 1; i < n; ++i)
            expected << sel + ",0)";
        QCOMPARE(env->fake.sent(u',', "ReadDgfeBy"), expected);
        QCOMPARE(timeoutAtCall, QList<int>(qMax(n, 1), 30));
        QVERIFY(form.ReadEnded && form.btnSalvaSuFile->isEnabled() && form.btnOk->isEnabled());
        QVERIFY(!form.CmdPausa->isEnabled() && !form.CmdStop->isEnabled());
        QVERIFY(MsgBox::shownTexts().isEmpty());
    }

    void pickersReadAgainAtEachCall()
    {
        selection->byNumber(QDate(2026, 3, 10), "1", "9");
        serve(lines(3));
        DGFECrtForm form;
        form.onReadTurn = [&] { selection->form.dtScontr->setDate(QDate(2026, 3, 11)); };
        form.Command1->click();
        QCOMPARE(env->fake.sent(u',', "ReadDgfeBy"), QStringList({"ReadDgfeByNumber(1,10,3,2026,1,9,1)",
                                                                "ReadDgfeByNumber(1,11,3,2026,1,9,0)",
                                                                "ReadDgfeByNumber(1,11,3,2026,1,9,0)"}));
    }

    void pauseHoldsOnlyAReadByDate()
    {
        serve(lines(6));
        selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 2));
        DGFECrtForm form;
        int turns = 0;
        int heldAt = -1;
        int pausedTurns = 0;
        form.onReadTurn = [&] {
            ++turns;
            if (turns == 3) {
                form.CmdPausa->click();
                heldAt = form.lineCount();
                // Woken by the timer, the read must still be where it was.
                QTimer::singleShot(30, &form, [&] {
                    QCOMPARE(form.lineCount(), heldAt);
                    QCOMPARE(form.ListDGFE->count(), heldAt); // a paused list shows all it has
                    QCOMPARE(form.CmdPausa->text(), QStringLiteral("RIPRENDI"));
                    form.CmdPausa->click();
                });
            } else if (form.ReadPaused) {
                ++pausedTurns;
            }
        };
        form.Command1->click();
        QCOMPARE(heldAt, 2);
        QVERIFY(pausedTurns >= 1);
        QCOMPARE(listOf(form), lines(6)); // nothing lost, nothing doubled
        QCOMPARE(form.CmdPausa->text(), QStringLiteral("PAUSA"));

        // By number the button only changes its caption.
        selection->byNumber(QDate(2026, 3, 10), "1", "6");
        DGFECrtForm number;
        number.onReadTurn = [&] {
            if (number.lineCount() == 1 && !number.ReadPaused)
                number.CmdPausa->click();
        };
        number.Command1->click();
        QCOMPARE(listOf(number), lines(6));
        QCOMPARE(number.CmdPausa->text(), QStringLiteral("RIPRENDI"));

        // A new read begins with the state word reset but the caption kept:
        // the first press pauses and leaves "RIPRENDI" as it is.
        number.onReadTurn = [&] {
            if (number.lineCount() == 1 && !number.ReadPaused)
                number.CmdPausa->click();
        };
        number.Command1->click();
        QCOMPARE(number.CmdPausa->text(), QStringLiteral("RIPRENDI"));
        QVERIFY(number.ReadPaused);
    }

    void endedInTheMiddle_data()
    {
        QTest::addColumn<int>("result"); // of the fifth read; 0: STOP pressed at the third line instead
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<QStringList>("texts");
        // STOP: the turn's own line still comes, and the one fetched after it.
        QTest::newRow("stop") << 0 << lines(5) << QStringList{};
        // A failure: the list keeps what came, and the line still held once more.
        const QStringList held{"RIGA 1", "RIGA 2", "RIGA 3", "RIGA 4", "RIGA 4"};
        QTest::newRow("line lost") << 1 << held << QStringList{"Registratore non collegato.\r\n"};
        QTest::newRow("no answer") << 8 << held << QStringList{"La stampante ha risposto ACK, ma entro il timeout "
                                                               "non ha cominciato ad inviare la risposta.\r\n"};
    }
    void endedInTheMiddle()
    {
        QFETCH(int, result);
        serve(lines(10));
        selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 2));
        DGFECrtForm form;
        form.onReadTurn = [&] {
            if (form.lineCount() != 3)
                return;
            if (result)
                env->fake.queueResult("ReadDgfeByDate", int16_t(result));
            else
                form.CmdStop->click();
        };
        form.Command1->click();
        QTEST(listOf(form), "list");
        QCOMPARE(env->fake.count("ReadDgfeByDate"), 5);
        QCOMPARE(form.ReadResult, int16_t(result));
        QTEST(MsgBox::shownTexts(), "texts");
        QVERIFY(form.ReadEnded && form.btnSalvaSuFile->isEnabled() && form.btnOk->isEnabled());
    }

    void busyControlReadsNothing()
    {
        selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 2));
        serve(lines(3));
        env->fake.busy = true;
        DGFECrtForm form;
        form.Command1->click();
        QVERIFY(env->fake.calls.isEmpty());
        QCOMPARE(form.ListDGFE->count(), 0);
        QVERIFY(form.ReadEnded);
    }

    void badReceiptNumbersEndTheReadCleanly_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::addColumn<QString>("named");
        QTest::newRow("letters") << "abc" << "5" << "abc";
        QTest::newRow("beyond 16 bits") << "1" << "40000" << "40000";
        QTest::newRow("empty") << "" << "2" << "";
    }
    void badReceiptNumbersEndTheReadCleanly()
    {
        QFETCH(QString, first);
        QFETCH(QString, last);
        QFETCH(QString, named);
        serve(lines(3));
        selection->byNumber(QDate(2026, 3, 10), first, last);
        DGFECrtForm form;
        form.Command1->click();
        QCOMPARE(env->fake.count("ReadDgfeByNumber"), 0);
        QCOMPARE(MsgBox::shownTexts(),
                 QStringList{QStringLiteral("Numero scontrino non valido: \"%1\"\nInserire un numero da 1 a 32767.").arg(named)});
        QVERIFY(form.ReadEnded && form.btnOk->isEnabled());
        QCOMPARE(form.ListDGFE->count(), 0);
    }

    void closeQuestion()
    {
        selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 2));
        DGFECrtForm form;
        form.show();
        MsgBox::queueAnswer(QMessageBox::No);
        form.btnOk->click();
        QVERIFY(form.isVisible());
        MsgBox::queueAnswer(QMessageBox::Yes);
        form.btnOk->click();
        QVERIFY(form.isVisible());
        QCOMPARE(MsgBox::shownTexts(),
                 QStringList({"Visualizzazione non ancora terminata! Vuoi terminare la visualizzazione ed uscire?",
                              "Visualizzazione non ancora terminata! Vuoi terminare la visualizzazione ed uscire?",
                              "Premere CHIUDI per uscire!"}));
        form.btnOk->click();
        QVERIFY(!form.isVisible());
        QCOMPARE(MsgBox::shownTexts().size(), 3);
    }

    void savedFileBytes()
    {
        serve({QStringLiteral("CAFFÈ           1,20 €"), QStringLiteral("Perché sì")});
        selection->byNumber(QDate(2026, 3, 10), "1", "2");
        DGFECrtForm form;
        form.Command1->click();
        const QString path = env->folder.filePath("DGFE_QN41100123.log");
        FileDialog::queueAnswer(path);
        form.btnSalvaSuFile->click();
        QCOMPARE(FileDialog::asked().first().folder, path); // proposed in the program's folder
        QCOMPARE(FileDialog::asked().first().filter, QStringLiteral("*.log"));
        QVERIFY(!FileDialog::asked().first().askBeforeReplacing);
        QCOMPARE(MsgBox::shown().last().text, QStringLiteral("Salvataggio su file eseguito"));
        QCOMPARE(MsgBox::shown().last().icon, QMessageBox::Information);
        const QByteArray expected = "DISPOSITIVO GIORNALE DI FONDO ELETTRONICO\r\n \r\n"
                                    "DATA 10/3/2026  DA Sc.  1   A Sc.  2\r\n \r\n"
                                    "CAFF\xC8           1,20 \x80\r\nPerch\xE9 s\xEC\r\n";
        QCOMPARE(TestFiles::contentOf(path), expected);

        // A second save to the same name replaces the first.
        selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 2));
        serve({});
        DGFECrtForm date;
        date.Command1->click();
        FileDialog::queueAnswer(path);
        date.btnSalvaSuFile->click();
        QCOMPARE(TestFiles::contentOf(path), QByteArray("DISPOSITIVO GIORNALE DI FONDO ELETTRONICO\r\n \r\n"
                                           "DAL 1/3/2026   AL 2/3/2026\r\n \r\nNessuna operazione!\r\n"));
        QCOMPARE(QDir(env->folder.path()).entryList(QDir::Files), QStringList{"DGFE_QN41100123.log"});
    }

    void saveCancelledUnwritableOrWithoutSerial()
    {
        selection->byDate(QDate(2026, 3, 1), QDate(2026, 3, 2));
        serve(lines(2));
        DGFECrtForm form;
        form.Command1->click();
        MsgBox::clearShown();

        FileDialog::queueAnswer(std::nullopt);
        form.btnSalvaSuFile->click();
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QCOMPARE(form.ListDGFE->count(), 2);

        env->fake.queueResult("ReadMatricola", 1);
        // A "folder" that is a file: no rights let anyone write under it.
        const QString locked = env->folder.filePath("locked");
        QVERIFY(QFile(locked).open(QIODevice::WriteOnly));
        FileDialog::queueAnswer(locked + "/DGFE_.log");
        form.btnSalvaSuFile->click();
        QCOMPARE(QFileInfo(FileDialog::asked().last().folder).fileName(), QStringLiteral("DGFE_.log"));
        QVERIFY(MsgBox::shownTexts().last().startsWith("Impossibile salvare il file"));
        QCOMPARE(MsgBox::shown().last().icon, QMessageBox::Critical);
    }

    void printRoads_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("first");
        QTest::addColumn<bool>("busy");
        QTest::addColumn<QString>("call");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("by date") << "btnDatePrn" << "1" << false << "PrintDgfeByDate(1,2,3,2026,5,3,2026)" << QStringList{};
        QTest::newRow("by date, busy") << "btnDatePrn" << "1" << true << "" << QStringList{};
        QTest::newRow("by number, 1,5 is 2") << "btnNumPrn" << "1,5" << false << "PrintDgfeByNumber(1,4,3,2026,2,7)"
                                             << QStringList{};
        QTest::newRow("not numeric") << "btnNumPrn" << "x" << false << "" << QStringList{"Inserire valori numerici!"};
        QTest::newRow("not numeric, busy") << "btnNumPrn" << "x" << true << "" << QStringList{"Inserire valori numerici!"};
        QTest::newRow("beyond 16 bits") << "btnNumPrn" << "99999" << false << ""
                                        << QStringList{"Numero scontrino non valido: \"99999\"\nInserire un numero da 1 a 32767."};
    }
    void printRoads()
    {
        QFETCH(QString, button);
        QFETCH(QString, first);
        QFETCH(bool, busy);
        selection->form.dtInizio->setDate(QDate(2026, 3, 2));
        selection->form.dtFine->setDate(QDate(2026, 3, 5));
        selection->form.dtScontr->setDate(QDate(2026, 3, 4));
        selection->form.txtScontrIni->setText(first);
        selection->form.txtScontrFine->setText("7");
        env->fake.busy = busy;
        selection->form.findChild<QPushButton *>(button)->click();
        QFETCH(QString, call);
        QCOMPARE(env->fake.sent(), call.isEmpty() ? QStringList{} : QStringList{call});
        QTEST(MsgBox::shownTexts(), "texts");
    }

    void selectionOpensTheScreenWithIt()
    {
        selection->form.txtScontrIni->setText("abc"); // not checked on the road to the screen
        selection->form.dtScontr->setDate(QDate(2026, 3, 4));
        QString shown;
        whenModal("DGFECrtForm", [&](QWidget *w) {
            auto *crt = static_cast<DGFECrtForm *>(w);
            shown = crt->lblDataIni2->text() + '|' + crt->lblScontFin2->text();
            crt->ReadEnded = true;
            crt->close();
        });
        selection->form.btnNumCrt->click();
        QCOMPARE(shown, QStringLiteral("abc|4/3/2026"));
        QVERIFY(DGFECrtForm::ByNumber);
    }
};

QTEST_MAIN(TestDgfeForms)
#include "tst_dgfeforms.moc"
