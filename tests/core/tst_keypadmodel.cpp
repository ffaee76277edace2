// SPDX-License-Identifier: GPL-3.0-or-later
// The sale keypad's rules without its window: key sequences against the
// exact commands and arguments they send, the display and the messages they
// leave, and the display after each key; the shut sale keys that outlive the keypad; the decimal key of two
// locales; the learning mode and the resets of the totals.
#include "FakeFPControl.h"
#include "printer/KelvoFPControl.h"
#include "settings/Conversions.h"
#include "simulator/KeypadModel.h"

#include <QtTest>

using Key = KeypadModel::Key;

static const QString kTooLarge = "Valore troppo grande: la cifra impostata non può essere inviata alla stampante.";

// A keypad on a scriptable printer; what it tells is recorded.
struct Keypad
{
    FakeFPControl fake;
    KeypadModel model;
    QStringList told;
    Keypad()
    {
        gFPControl = &fake;
        model.report = [this](int16_t r) {
            if (r != 0)
                told << QString("result %1").arg(r);
        };
        model.tell = [this](const QString &text, bool warning) { told << (warning ? "warning " : "") + text; };
    }
    ~Keypad() { gFPControl = nullptr; }
    QStringList sent() const
    {
        QStringList out;
        for (const auto &c : fake.calls)
            out << c.name + "(" + c.args.join(',') + ")";
        return out;
    }
    // One token of a sequence: a key, or a change of the printer.
    void press(const QString &t)
    {
        static const QStringList digits{"1", "2", "3", "4", "5", "6", "7", "8", "9", "0", "00"};
        static const QHash<QString, Key> keys{
            {",", Key::Decimal}, {"x", Key::Multiply}, {"CL", Key::Clear}, {"SUB", Key::Subtotal}, {"CASH", Key::Cash},
            {"CHQ", Key::Cheque}, {"CARD", Key::Card}, {"TKT", Key::Ticket}, {"CDESC", Key::CashDescription},
            {"DRAW", Key::Drawer}, {"FEED", Key::Feed}, {"Z", Key::Closure}, {"LOCK", Key::Lock}, {"UNLOCK", Key::Unlock},
            {"+E0", Key::ItemSurcharge}, {"-E0", Key::ItemDiscount}, {"+P0", Key::ItemPercentSurcharge},
            {"-P0", Key::ItemPercentDiscount}, {"+E1", Key::TotalSurcharge}, {"-E1", Key::TotalDiscount},
            {"+P1", Key::TotalPercentSurcharge}, {"-P1", Key::TotalPercentDiscount}};
        const QStringList parts = t.split(':');
        if (digits.contains(t))
            model.press(Key(digits.indexOf(t)));
        else if (keys.contains(t))
            model.press(keys[t]);
        else if (t.size() == 2 && (t[0] == 'R' || t[0] == 'S'))
            model.press(Key(int(t[0] == 'R' ? Key::Sale1 : Key::Void1) + t[1].digitValue() - 1));
        else if (parts[0] == "desc")
            model.Description = QString(parts[1]).replace('_', ' ');
        else if (parts[0] == "op")
            model.Operator = int16_t(parts[1].toInt());
        else if (t == "busy" || t == "free")
            fake.busy = t == "busy";
        else if (t == "open")
            KeypadModel::PaymentOpen = true;
        else if (parts[0] == "res") // what the printer says is left, in Currency's wire form
            fake.setProperty("PaymentResidue", parts[1]);
        else if (parts[0] == "fail") // fail:Name:result
            fake.queueResult(parts[1], int16_t(parts[2].toInt()));
        else
            QFAIL(qPrintable("unknown token " + t));
    }
    void keys(const QString &sequence)
    {
        for (const QString &t : sequence.split(' ', Qt::SkipEmptyParts))
            press(t);
    }
};

class TestKeypadModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
        KeypadModel::PaymentOpen = false;
    }
    void cleanup() { Conv::setLocaleForTests(QLocale::system()); }

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
        QTest::newRow("refused sale: told, figure to key anew") << "fail:SellReparto:-1 5 R1 R1"
            << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5"
            << QStringList{"result -1"} << false;
        QTest::newRow("line dropped") << "fail:SellReparto:1 5 R1" << QStringList{sell("1", "REP 1", "50000", 1)} << "1 x 5"
                                      << QStringList{"result 1"} << false;
        QTest::newRow("figure beyond the control's money: told, not sent") << QString("9 ").repeated(20) + "R1"
            << none << "1 x " + QString("9").repeated(20) << QStringList{"warning " + kTooLarge} << false;

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
        QTest::newRow("refused subtotal adjustment shuts them too") << "fail:ScontoPercTotale:-1 1 0 -P1"
            << QStringList{"ScontoPercTotale(1,10)"} << "0" << QStringList{"result -1"} << true;
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
        QTest::newRow("refused payment: told, still open") << "open fail:PayReceipt:-1 5 CASH"
            << QStringList{pay("Contante", "50000", 0, 0)} << "0" << QStringList{"result -1"} << true;
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
        QTest::newRow("cash description refused") << "fail:PayContanteDesc:-1 9 x 5 CDESC" << QStringList{"PayContanteDesc(1,9,50000)"}
            << "0" << QStringList{"result -1"} << false;

        // Other keys and the lock
        QTest::newRow("subtotal, drawer, paper keep the entry") << "5 SUB DRAW FEED R1"
            << QStringList{"PrintSubtotal(1)", "OpenDrawer(1)", "FeedPaper(1,1)", sell("1", "REP 1", "50000", 1)} << "1 x 5" << none << false;
        QTest::newRow("closure refused with a receipt open") << "fail:FiscalClosure:-1 Z" << QStringList{"FiscalClosure(1)"} << "0"
            << QStringList{"result -1"} << false;
        QTest::newRow("lock sends twice and shuts the keys") << "5 LOCK 6 R1 CASH SUB CDESC"
            << QStringList{"LockKeys(1)", "LockKeys(1)"} << "-TASTIERA BLOCCATA-" << none << false;
        QTest::newRow("refused lock still locks") << "fail:LockKeys:-1 LOCK 6" << QStringList{"LockKeys(1)", "LockKeys(1)"}
            << "-TASTIERA BLOCCATA-" << QStringList{"result -1"} << false;
        QTest::newRow("unlock resets and revives") << "LOCK UNLOCK 6 R1"
            << QStringList{"LockKeys(1)", "LockKeys(1)", "UnlockKeys(1)", "UnlockKeys(1)", sell("1", "REP 1", "60000", 1)} << "1 x 6" << none << false;
        QTest::newRow("busy lock does nothing") << "busy LOCK free 6" << none << "6" << none << false;
    }
    void keySequences()
    {
        QFETCH(QString, keys);
        Keypad k;
        k.keys(keys);
        QTEST(k.sent(), "calls");
        QTEST(k.model.Display, "display");
        QTEST(k.told, "messages");
        QTEST(KeypadModel::PaymentOpen, "paymentOpen");
    }

    // The display after each key of a sequence, '|' between them.
    void displayAfterEachKey_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("displays");
        QTest::newRow("decimals") << "0 , 5 , 0 0 1 00" << "0|0,|0,5|0,5|0,50|0,500|0,500|0,500";
        QTest::newRow("multiplier, sale, next figure") << "3 x 2 R2 7" << "3|3 x |3 x 2|3 x 2|7";
        QTest::newRow("void") << "2 S4 CL" << "2|STORNO 1 x 2  REP 4|0";
        QTest::newRow("adjustment and payment clear") << "5 R1 1 -E0 4 CASH" << "5|1 x 5|1|0|4|0";
        QTest::newRow("lock and unlock") << "5 LOCK 6 UNLOCK" << "5|-TASTIERA BLOCCATA-|-TASTIERA BLOCCATA-|0";
    }
    void displayAfterEachKey()
    {
        QFETCH(QString, keys);
        Keypad k;
        QStringList displays;
        for (const QString &t : keys.split(' ')) {
            k.press(t);
            displays << k.model.Display;
        }
        QTEST(displays.join('|'), "displays");
    }

    void closureGivesThePrinterTime()
    {
        Keypad k;
        k.keys("Z");
        QCOMPARE(k.fake.TimeoutOp(), int16_t(30));
    }

    void shutSaleKeysOutliveTheKeypad()
    {
        std::optional<Keypad> k;
        k.emplace();
        k->keys("1 0 R1 res:50000 5 CASH");
        k.emplace();
        QCOMPARE(k->model.Display, QStringLiteral("0")); // the keypad starts clean
        k->keys("res:50000 3 R1 CL CASH 3 R1");            // shut, then paid in whole
        QCOMPARE(k->sent(), QStringList({"PayReceipt(1,Contante,0,0,0,1)", "SellReparto(1,1,REP 1,30000,1,1)"}));
        QVERIFY(!KeypadModel::PaymentOpen);
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
        Keypad k;
        QCOMPARE(k.model.DecimalSeparator, separator);
        k.keys("2 , 5 x 1 , 2 5 R1");
        QCOMPARE(k.model.Display, QString("2S5 x 1S25").replace("S", separator));
        QCOMPARE(k.sent(), QStringList{"SellReparto(1,2.5,REP 1,12500,1,1)"});
    }

    void learningMode()
    {
        Keypad k;
        k.fake.setProperty("FlagValue", "1");
        QCOMPARE(k.model.learningMode(), std::optional<bool>(true));
        k.fake.queueResult("ReadFlag", 7); // a failed read tells nothing
        QCOMPARE(k.model.learningMode(), std::nullopt);
        k.fake.busy = true;
        QCOMPARE(k.model.learningMode(), std::nullopt);
        QVERIFY(!k.model.setLearningMode(false));
        k.fake.busy = false;
        QVERIFY(k.model.setLearningMode(false));
        k.fake.queueResult("WriteFlag", -1);
        QVERIFY(!k.model.setLearningMode(true));
        QVERIFY(k.model.setLearningMode(true));
        QCOMPARE(k.sent(), QStringList({"ReadFlag(1)", "ReadFlag(1)", "WriteFlag(1,0)", "WriteFlag(1,1)", "WriteFlag(1,1)"}));
        QCOMPARE(k.told, QStringList({"Modalità fiscale", "result -1", "Modalità apprendimento"}));
    }

    void resetsOfTotals()
    {
        Keypad k;
        k.fake.setDefaultResult("ResetTotalePlu", -1); // not looked at
        k.fake.busy = true;                             // nor is the printer asked whether it is busy
        k.model.resetPluTotals();
        k.model.resetPromoTotals();
        const QStringList sent = k.sent();
        QCOMPARE(sent.size(), 1003);
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(sent[i], QString("ResetTotalePlu(%1)").arg(i + 1));
        QCOMPARE(sent.mid(1000), QStringList({"ResetTotalePromo(1,0)", "ResetTotalePromo(2,0)", "ResetTotalePromo(3,0)"}));
        QVERIFY(k.told.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestKeypadModel)
#include "tst_keypadmodel.moc"
