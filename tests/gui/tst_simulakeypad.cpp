// The sale keypad as a state machine: key sequences against the exact
// commands and arguments they send, the display and the messages they leave;
// the shut sale keys that outlive the form; the decimal key of two locales;
// the physical keyboard; the lock; the menus and the screens the keys open;
// and the eight X reports.
#include "FormTestEnv.h"
#include "app/DataOraForm.h"
#include "commissioning/InstallFlagForm.h"
#include "commissioning/InstallHeaderForm.h"
#include "commissioning/InstallLogoForm.h"
#include "programming/ProgForm.h"
#include "settings/Conversions.h"
#include "simulator/KelvoFpSimulaForm.h"
#include "simulator/XRepForm.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

using Form = KelvoFpSimulaForm;

static const QString kCloseReceipt = "Errore del registratore di cassa: CHIUDERE LO SCONTRINO.\r\n";
static const QString kNoLine = "Registratore non collegato.\r\n";
static const QString kTooLarge = "Valore troppo grande: la cifra impostata non può essere inviata alla stampante.";

// One token of a sequence: a key of the form, or a change of the printer.
static void press(Form &f, FakeFPControl &fake, const QString &t)
{
    static const QStringList digits{"1", "2", "3", "4", "5", "6", "7", "8", "9", "0", "00"};
    const QHash<QString, QPushButton *> keys{
        {",", f.btnDecimali}, {"x", f.btnMoltiplicatoreProd}, {"CL", f.btnCanc}, {"SUB", f.btnSubTot},
        {"CASH", f.btnContante}, {"CHQ", f.btnAssegno}, {"CARD", f.btnCartaCredito}, {"TKT", f.btnTicket},
        {"CDESC", f.btnContanteDesc}, {"DRAW", f.btnApriCassetto}, {"FEED", f.btnAvanzaScontrino},
        {"Z", f.btnChiusuraGiorno}, {"LOCK", f.btnBloccaTasti}, {"UNLOCK", f.btnSbloccaTasti},
        {"+E0", f.btnAbbuonoPiuVal[0]}, {"-E0", f.btnAbbuonoMenoVal[0]}, {"+P0", f.btnScontoPercPiu[0]},
        {"-P0", f.btnScontoPercMeno[0]}, {"+E1", f.btnAbbuonoPiuVal[1]}, {"-E1", f.btnAbbuonoMenoVal[1]},
        {"+P1", f.btnScontoPercPiu[1]}, {"-P1", f.btnScontoPercMeno[1]}};
    const QStringList parts = t.split(':');
    if (digits.contains(t))
        f.btnTastiera[digits.indexOf(t)]->click();
    else if (keys.contains(t))
        keys[t]->click();
    else if (t.size() == 2 && (t[0] == 'R' || t[0] == 'S'))
        (t[0] == 'R' ? f.btnRep[t[1].digitValue() - 1] : f.btnStorno[t[1].digitValue() - 1])->click();
    else if (parts[0] == "desc")
        f.txtDescProd->setText(QString(parts[1]).replace('_', ' '));
    else if (parts[0] == "op") {
        f.comboOperatore->setCurrentText(parts[1]);
        Q_EMIT f.comboOperatore->activated(f.comboOperatore->currentIndex());
    } else if (t == "busy" || t == "free")
        fake.busy = t == "busy";
    else if (t == "open")
        Form::PaymentOpen = true;
    else if (parts[0] == "res") // what the printer says is left, in Currency's wire form
        fake.setProperty("PaymentResidue", parts[1]);
    else if (parts[0] == "refuse") { // refuse:Name:ErrorCode
        fake.queueResult(parts[1], -1);
        fake.setProperty("ErrorCode", parts[2]);
    } else if (parts[0] == "fail") // fail:Name:result
        fake.queueResult(parts[1], int16_t(parts[2].toInt()));
    else
        QFAIL(qPrintable("unknown token " + t));
}

static QStringList sent(const FakeFPControl &fake)
{
    QStringList out;
    for (const auto &c : fake.calls)
        out << c.name + "(" + c.args.join(',') + ")";
    return out;
}

class TestSimulaKeypad : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
        Form::PaymentOpen = false;
    }
    void cleanup()
    {
        env.reset();
        Conv::setLocaleForTests(QLocale::system());
    }

    void keySequences_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<QString>("display");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<bool>("paymentOpen");
        const auto sell = [](const QString &q, const QString &d, const QString &p, int n, int op = 1) {
            return QString("SellReparto(%1,%2,%3,%4,%5,1)").arg(op).arg(q, d, p).arg(n);
        };
        const auto pay = [](const QString &d, const QString &a, int type, int n) {
            return QString("PayReceipt(1,%1,%2,%3,%4,1)").arg(d, a).arg(type).arg(n);
        };
        const QStringList none;

        // Figures as they are keyed
        QTest::newRow("0 then 5 is 5") << "0 5 R1" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5" << none << false;
        QTest::newRow("0 comma 5 is 0,5") << "0 , 5 R1" << QStringList{sell("1", "REP 1", "5000", 1)} << "1 x 0,5" << none << false;
        QTest::newRow("fourth decimal ignored") << "1 , 2 3 4 5 R1" << QStringList{sell("1", "REP 1", "12340", 1)} << "1 x 1,234" << none << false;
        QTest::newRow("00 after two decimals ignored, count stays at 4")
            << "1 , 2 3 00 5" << none << "1,23" << none << false;
        QTest::newRow("20th accepted, 21st refused") << QString("1 ").repeated(21).trimmed() << none
                                                     << QString("1").repeated(20) << none << false;
        QTest::newRow("00 can reach 21") << QString("1 ").repeated(19) + "00" << none << QString("1").repeated(19) + "00" << none << false;
        QTest::newRow("second comma ignored") << "1 , , 5 R1" << QStringList{sell("1", "REP 1", "15000", 1)} << "1 x 1,5" << none << false;
        QTest::newRow("comma on empty keypad does nothing") << ", 5" << none << "5" << none << false;
        QTest::newRow("CL clears the figure") << "5 CL 7 R1" << QStringList{sell("1", "REP 1", "70000", 1)} << "1 x 7" << none << false;

        // Sales, voids, multiplication
        QTest::newRow("REP twice sends one sale") << "5 R1 R1" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5" << none << false;
        QTest::newRow("REP on empty keypad") << "R1 S1" << none << "0" << none << false;
        QTest::newRow("3 x 2 on REP 2") << "3 x 2 R2" << QStringList{sell("3", "REP 2", "20000", 2)} << "3 x 2" << none << false;
        QTest::newRow("next sale back to quantity 1") << "3 x 2 R2 4 R1"
            << QStringList{sell("3", "REP 2", "20000", 2), sell("1", "REP 1", "40000", 1)} << "1 x 4" << none << false;
        QTest::newRow("decimal quantity, second multiplier ignored") << "1 , 5 x x 2 R4"
            << QStringList{sell("1.5", "REP 4", "20000", 4)} << "1,5 x 2" << none << false;
        QTest::newRow("multiplier on empty keypad") << "x 5 R1" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5" << none << false;
        QTest::newRow("quantity zero goes to the printer") << "0 x 5 R1" << QStringList{sell("0", "REP 1", "50000", 1)} << "0 x 5" << none << false;
        QTest::newRow("description cut to 25, then trimmed") << "desc:_Formaggio_grana_padano__stagionato 9 R1"
            << QStringList{sell("1", "Formaggio grana padano", "90000", 1)} << "1 x 9" << none << false;
        QTest::newRow("void: own order, empty description, decorated display") << "7 S3"
            << QStringList{"StornoReparto(1,,1,70000,3,1)"} << "STORNO 1 x 7  REP 3" << none << false;
        QTest::newRow("void with quantity and description") << "2 x 3 desc:PANE S1"
            << QStringList{"StornoReparto(1,PANE,2,30000,1,1)"} << "STORNO 2 x 3  REP 1" << none << false;
        QTest::newRow("comma after a sale: no effect on the next") << "5 R1 , 3 R2"
            << QStringList{sell("1", "REP 1", "50000", 1), sell("1", "REP 2", "30000", 2)} << "1 x 3" << none << false;
        QTest::newRow("operator chosen") << "op:7 5 R1" << QStringList{sell("1", "REP 1", "50000", 1, 7)} << "1 x 5" << none << false;
        QTest::newRow("busy sale counts as posted") << "busy 5 R1 free R1 6 R2"
            << QStringList{sell("1", "REP 2", "60000", 2)} << "1 x 6" << none << false;
        QTest::newRow("refused sale: told, figure to key anew") << "refuse:SellReparto:22 5 R1 R1"
            << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5"
            << QStringList{"Errore del registratore di cassa: NON PROGRAMMATO.\r\n"} << false;
        QTest::newRow("line dropped") << "fail:SellReparto:1 5 R1" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5"
                                      << QStringList{kNoLine} << false;
        QTest::newRow("figure beyond the control's money: told, not sent") << QString("9 ").repeated(20) + "R1"
            << none << "1 x " + QString("9").repeated(20) << QStringList{kTooLarge} << false;

        // Adjustments
        QTest::newRow("item discount needs a fresh figure") << "5 R1 -E0" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5"
            << QStringList{"Impostare il valore del'abbuono!"} << false;
        QTest::newRow("words of the adjustments") << "+E0 +P1 -P0" << none << "0"
            << QStringList{"Impostare il valore dell'aumento!", "Impostare il valore dell'aumento!", "Impostare il valore dello sconto!"} << false;
        QTest::newRow("item discount by amount") << "5 R1 1 , 5 -E0" << QStringList{sell("1", "REP 1", "50000", 1), "AbbuonoReparto(1,15000)"} << "0" << none << false;
        QTest::newRow("item adjustments") << "1 0 +P0 2 +E0 5 -P0"
            << QStringList{"AumentoPercReparto(1,10)", "AumentoReparto(1,20000)", "ScontoPercReparto(1,5)"} << "0" << none << false;
        QTest::newRow("subtotal adjustment shuts the sale keys") << "2 -E1 5 R1"
            << QStringList{"AbbuonoTotale(1,20000)"} << "5" << none << true;
        QTest::newRow("refused subtotal adjustment shuts them too") << "refuse:ScontoPercTotale:11 1 0 -P1"
            << QStringList{"ScontoPercTotale(1,10)"} << "0" << QStringList{"Errore del registratore di cassa: SEQUENZA ERRATA.\r\n"} << true;
        QTest::newRow("subtotal surcharges") << "3 +E1 2 , 5 +P1" << QStringList{"AumentoTotale(1,30000)", "AumentoPercTotale(1,2.5)"} << "0" << none << true;
        QTest::newRow("busy adjustment: nothing sent, keypad reset") << "busy 5 -E1" << none << "0" << none << false;

        // Payments
        QTest::newRow("cash of 5 on 10: sale keys shut, CL does not revive them") << "1 0 R1 res:50000 5 CASH 3 R1 CL 3 R1"
            << QStringList{sell("1", "REP 1", "100000", 1), pay("Contante", "50000", 0, 0)} << "3" << none << true;
        QTest::newRow("cash of the whole reopens them") << "open CASH 3 R1"
            << QStringList{pay("Contante", "0", 0, 0), sell("1", "REP 1", "30000", 1)} << "1 x 3" << none << false;
        QTest::newRow("cash after a sale pays the whole") << "5 R1 res:10000 CASH"
            << QStringList{sell("1", "REP 1", "50000", 1), pay("Contante", "0", 0, 0)} << "0" << none << false;
        QTest::newRow("cash with residue 0") << "open res:0 2 0 CASH" << QStringList{pay("Contante", "200000", 0, 0)} << "0" << none << false;
        QTest::newRow("refused payment: told, still open") << "open refuse:PayReceipt:20 5 CASH"
            << QStringList{pay("Contante", "50000", 0, 0)} << "0" << QStringList{"Errore del registratore di cassa: SUPERA VALORE.\r\n"} << true;
        QTest::newRow("busy payment: nothing sent, still open") << "open busy 5 CASH" << none << "0" << none << true;
        QTest::newRow("cheque asks for a value") << "CHQ 5 R1 CHQ" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5"
            << QStringList{"Impostare il valore dell'assegno!", "Impostare il valore dell'assegno!"} << false;
        QTest::newRow("cheque") << "res:10000 2 0 CHQ" << QStringList{pay("Assegno", "200000", 1, 0)} << "0" << none << true;
        QTest::newRow("card with nothing keyed") << "open CARD" << none << "0" << none << true;
        QTest::newRow("card ignores the figure") << "open res:10000 7 CARD" << QStringList{pay("Carta Credito", "0", 2, 0)} << "0" << none << false;
        QTest::newRow("card after a sale only clears") << "5 R1 CARD" << QStringList{sell("1", "REP 1", "50000", 1)} << "0" << none << false;
        QTest::newRow("ticket with nothing keyed") << "TKT" << none << "0" << none << false;
        QTest::newRow("one ticket") << "res:10000 7 TKT" << QStringList{pay("Ticket", "70000", 3, 1)} << "0" << none << true;
        QTest::newRow("count x value tickets") << "res:0 3 x 5 , 2 9 TKT" << QStringList{pay("Ticket", "52900", 3, 3)} << "0" << none << false;
        QTest::newRow("ticket takes the sale's leftover") << "res:0 2 x 5 R1 TKT"
            << QStringList{sell("2", "REP 1", "50000", 1), pay("Ticket", "50000", 3, 2)} << "0" << none << false;
        QTest::newRow("cash description n x v") << "res:0 2 x 5 0 CDESC" << QStringList{"PayContanteDesc(1,2,500000)"} << "0" << none << false;
        QTest::newRow("cash description with a residue") << "res:10000 1 x 5 CDESC" << QStringList{"PayContanteDesc(1,1,50000)"} << "0" << none << true;
        QTest::newRow("cash description without x does nothing") << "5 CDESC" << none << "5" << none << false;
        QTest::newRow("cash description refused") << "refuse:PayContanteDesc:22 9 x 5 CDESC" << QStringList{"PayContanteDesc(1,9,50000)"}
            << "0" << QStringList{"Errore del registratore di cassa: NON PROGRAMMATO.\r\n"} << false;

        // Other keys and the lock
        QTest::newRow("subtotal, drawer, paper keep the entry") << "5 SUB DRAW FEED R1"
            << QStringList{"PrintSubtotal(1)", "OpenDrawer(1)", "FeedPaper(1,1)", sell("1", "REP 1", "50000", 1)} << "1 x 5" << none << false;
        QTest::newRow("closure refused with a receipt open") << "refuse:FiscalClosure:23 Z" << QStringList{"FiscalClosure(1)"} << "0"
            << QStringList{kCloseReceipt} << false;
        QTest::newRow("lock sends twice and shuts the keys") << "5 LOCK 6 R1 CASH SUB CDESC"
            << QStringList{"LockKeys(1)", "LockKeys(1)"} << "-TASTIERA BLOCCATA-" << none << false;
        QTest::newRow("refused lock still locks") << "refuse:LockKeys:11 LOCK 6" << QStringList{"LockKeys(1)", "LockKeys(1)"}
            << "-TASTIERA BLOCCATA-" << QStringList{"Errore del registratore di cassa: SEQUENZA ERRATA.\r\n"} << false;
        QTest::newRow("unlock resets and revives") << "LOCK UNLOCK 6 R1"
            << QStringList{"LockKeys(1)", "LockKeys(1)", "UnlockKeys(1)", "UnlockKeys(1)", sell("1", "REP 1", "60000", 1)} << "1 x 6" << none << false;
        QTest::newRow("busy lock does nothing") << "busy LOCK free 6" << none << "6" << none << false;
    }
    void keySequences()
    {
        QFETCH(QString, keys);
        Form form;
        for (const QString &t : keys.split(' ', Qt::SkipEmptyParts))
            press(form, env->fake, t);
        QTEST(sent(env->fake), "calls");
        QTEST(form.txtDisplay->text(), "display");
        QTEST(MsgBox::shownTexts(), "messages");
        QTEST(Form::PaymentOpen, "paymentOpen");
    }

    void closureGivesThePrinterTime()
    {
        Form form;
        form.btnChiusuraGiorno->click();
        QCOMPARE(env->fake.TimeoutOp(), int16_t(30));
    }

    void shutSaleKeysOutliveTheForm()
    {
        env->fake.setProperty("PaymentResidue", "50000");
        {
            Form form;
            for (const char *t : {"1", "0", "R1", "5", "CASH"})
                press(form, env->fake, t);
        }
        Form again;
        QCOMPARE(again.txtDisplay->text(), QStringLiteral("0")); // the keypad starts clean
        for (const char *t : {"3", "R1"})
            press(again, env->fake, t);
        QCOMPARE(env->fake.count("SellReparto"), 1);
        press(again, env->fake, "CL");
        press(again, env->fake, "CASH"); // the whole
        QVERIFY(!Form::PaymentOpen);
        for (const char *t : {"3", "R1"})
            press(again, env->fake, t);
        QCOMPARE(env->fake.count("SellReparto"), 2);
    }

    void decimalKeyOfTheLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("separator");
        QTest::newRow("Italian") << QLocale(QLocale::Italian, QLocale::Italy) << ",";
        QTest::newRow("English") << QLocale(QLocale::English, QLocale::UnitedStates) << ".";
    }
    void decimalKeyOfTheLocale()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, separator);
        Conv::setLocaleForTests(locale);
        Form form;
        QCOMPARE(form.DecimalSeparator, separator);
        for (const char *t : {"2", ",", "5", "x", "1", ",", "2", "5", "R1"})
            press(form, env->fake, t);
        QCOMPARE(form.txtDisplay->text(), QString("2S5 x 1S25").replace("S", separator));
        QCOMPARE(sent(env->fake), QStringList{"SellReparto(1,2.5,REP 1,12500,1,1)"});
    }

    void physicalKeyboard()
    {
        Form form;
        QTest::keyClicks(&form, "3*2,5");
        QTest::keyClick(&form, Qt::Key_F2);
        QTest::keyClick(&form, Qt::Key_7, Qt::KeypadModifier);
        QTest::keyClicks(form.txtDescProd, "12");          // typed into the description, not keyed
        QTest::keyClick(form.txtDescProd, Qt::Key_Return); // ends the typing, pays nothing
        QTest::keyClick(&form, Qt::Key_F1, Qt::ShiftModifier);
        QTest::keyClick(&form, Qt::Key_Enter);
        QCOMPARE(sent(env->fake), QStringList({"SellReparto(1,3,REP 2,25000,2,1)", "StornoReparto(1,12,1,70000,1,1)",
                                               "PayReceipt(1,Contante,0,0,0,1)"}));
        QTest::keyClick(&form, Qt::Key_4);
        QTest::keyClick(&form, Qt::Key_Delete);
        QCOMPARE(form.txtDisplay->text(), QStringLiteral("0"));
        form.btnBloccaTasti->click();
        QTest::keyClicks(&form, "12");
        QCOMPARE(form.txtDisplay->text(), QStringLiteral("-TASTIERA BLOCCATA-"));
    }

    void lockLeavesSomeKeysAlive()
    {
        Form form;
        form.btnBloccaTasti->click();
        QStringList alive;
        for (QPushButton *b : form.findChildren<QPushButton *>())
            if (b->isEnabled())
                alive << b->objectName();
        alive.sort();
        QCOMPARE(alive, QStringList({"btnBloccaTasti", "btnContanteDesc", "btnEsci", "btnMonitor", "btnSbloccaTasti"}));
        QVERIFY(form.comboOperatore->isEnabled());
    }

    void learningModeMenu()
    {
        Form form;
        env->fake.setProperty("FlagValue", "1");
        Q_EMIT form.mSetup->aboutToShow();
        QVERIFY(form.mApprend->isChecked());
        env->fake.queueResult("ReadFlag", 7); // a failed read leaves the mark
        env->fake.setProperty("FlagValue", "0");
        Q_EMIT form.mSetup->aboutToShow();
        QVERIFY(form.mApprend->isChecked());
        env->fake.busy = true;
        Q_EMIT form.mSetup->aboutToShow();
        form.mApprend->trigger();
        env->fake.busy = false;
        QVERIFY(form.mApprend->isChecked());

        form.mApprend->trigger();
        env->fake.setProperty("ErrorCode", "23");
        env->fake.queueResult("WriteFlag", -1);
        form.mApprend->trigger(); // refused: the mark stays
        form.mApprend->trigger();
        QVERIFY(form.mApprend->isChecked());
        QCOMPARE(sent(env->fake), QStringList({"ReadFlag(1)", "ReadFlag(1)", "WriteFlag(1,0)", "WriteFlag(1,1)", "WriteFlag(1,1)"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList({"Modalità fiscale", kCloseReceipt, "Modalità apprendimento"}));
    }

    void resetsOfTotals()
    {
        Form form;
        MsgBox::queueAnswer(QMessageBox::No);
        form.mnuResetTotPLU->trigger();
        MsgBox::queueAnswer(QMessageBox::No);
        form.mnuResetTotPromoTable->trigger();
        QCOMPARE(env->fake.calls.size(), 0);

        env->fake.setDefaultResult("ResetTotalePlu", -1); // not looked at
        form.mnuResetTotPLU->trigger();
        form.mnuResetTotPromoTable->trigger();
        const auto plu = env->fake.callsOf("ResetTotalePlu");
        QCOMPARE(plu.size(), 1000);
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(plu[i].args, QStringList{QString::number(i + 1)});
        QCOMPARE(sent(env->fake).mid(1000), QStringList({"ResetTotalePromo(1,0)", "ResetTotalePromo(2,0)", "ResetTotalePromo(3,0)"}));
        const auto shown = MsgBox::shown();
        QCOMPARE(shown.size(), 6);
        QCOMPARE(shown[0].text, QStringLiteral("Si proprio sicuro di voler resettare il totale dei PLU"));
        QCOMPARE(shown[1].text, QStringLiteral("Sei proprio sicuro di voler resettare il totale della tabella delle promozioni"));
        QVERIFY(shown[0].buttons == (QMessageBox::Yes | QMessageBox::No) && shown[0].title == "Fiscorda");
        QCOMPARE(shown[3].text + "|" + shown[3].title, QStringLiteral("Operazione completata!|Fiscorda"));
        QCOMPARE(shown[3].icon, QMessageBox::Information);
        QVERIFY(!QApplication::overrideCursor());
    }

    void screensOpened_data()
    {
        QTest::addColumn<QString>("opener");
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("mode");
        for (auto [item, kind] : {std::pair{"mCarte", 0}, {"mCont", 1}, {"mTicket", 2}, {"mIva", 3}, {"mReparti", 4},
                                  {"mOperat", 5}, {"mnuContantiPredefiniti", 6}})
            QTest::newRow(item) << item << "ProgForm" << QString("wizard 0 kind %1").arg(kind);
        QTest::newRow("mFlag") << "mFlag" << "InstallFlagForm" << "standalone";
        QTest::newRow("mLoghi") << "mLoghi" << "InstallLogoForm" << "standalone";
        QTest::newRow("mHeader") << "mHeader" << "InstallHeaderForm" << "standalone";
        QTest::newRow("btnXRep") << "btnXRep" << "XRepForm" << "";
        QTest::newRow("btnDGFE") << "btnDGFE" << "DGFEForm" << "";
        QTest::newRow("btnDataOra") << "btnDataOra" << "DataOraForm" << "wizard 0";
        QTest::newRow("btnMonitor") << "btnMonitor" << "FpMonitorForm" << "";
    }
    void screensOpened()
    {
        QFETCH(QString, opener);
        QFETCH(QString, screen);
        ProgForm::WizardMode = DataOraForm::WizardMode = true;
        ProgForm::TableKind = 9;
        InstallFlagForm::StandaloneMode = InstallLogoForm::StandaloneMode = InstallHeaderForm::StandaloneMode = false;
        Form form;
        form.show();
        QString seen;
        whenModal(screen, [&](QWidget *w) {
            seen = w->objectName();
            if (screen == "ProgForm")
                seen += QString(" wizard %1 kind %2").arg(int(ProgForm::WizardMode)).arg(ProgForm::TableKind);
            else if (screen == "DataOraForm")
                seen += QString(" wizard %1").arg(int(DataOraForm::WizardMode));
            else if (screen.startsWith("Install"))
                seen += InstallFlagForm::StandaloneMode || InstallLogoForm::StandaloneMode || InstallHeaderForm::StandaloneMode
                            ? " standalone" : " chain";
            w->close();
        });
        if (auto *action = form.findChild<QAction *>(opener))
            action->trigger();
        else
            form.findChild<QPushButton *>(opener)->click();
        QFETCH(QString, mode);
        QCOMPARE(seen, (screen + " " + mode).trimmed());
        QVERIFY(!QApplication::activeModalWidget() || QApplication::activeModalWidget() == &form);
    }

    void xReports()
    {
        XRepForm form;
        QCOMPARE(QStringList({form.comboOperatore->currentText(), form.comboReparto->currentText(),
                              form.comboOperatore->itemText(12), form.comboReparto->itemText(40)}),
                 QStringList({"1", "1", "12", "40"}));
        env->fake.busy = true;
        form.btnFinGior->click(); // lost without a word
        env->fake.busy = false;
        for (QPushButton *b : {form.btnFinGior, form.btnFinPer, form.btnOraGio, form.btnOraPer, form.btnOperGio, form.btnRepPer})
            b->click();
        form.comboOperatore->setCurrentText("0"); // sent as it stands
        form.comboReparto->setCurrentText("40");
        form.btnOperPer->click();
        env->fake.setProperty("ErrorCode", "23");
        env->fake.queueResult("PrintXRepartoGiorno", -1);
        form.btnRepGio->click();
        QCOMPARE(sent(env->fake), QStringList({"PrintXFinanziarioGiorno(1)", "PrintXFinanziarioPeriodo(1)", "PrintXOrarioGiorno(1)",
                                               "PrintXOrarioPeriodo(1)", "PrintXOperatoreGiorno(1,1)", "PrintXRepartoPeriodo(1,1)",
                                               "PrintXOperatorePeriodo(1,0)", "PrintXRepartoGiorno(1,40)"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{kCloseReceipt});
    }
};

QTEST_MAIN(TestSimulaKeypad)
#include "tst_simulakeypad.moc"
