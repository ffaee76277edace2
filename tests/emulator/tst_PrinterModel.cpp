// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated printer's rules, without any transport.

#include "EmulatorTestKit.h"

#include "settings/Cp1252.h"

#include <QTemporaryDir>

using namespace Kit;

// Properties of a reply, '|' between them.
static QString props(const Reply &r, std::initializer_list<const char *> names)
{
    QStringList values;
    for (const char *n : names)
        values << r.property(n);
    return values.join('|');
}

class TestPrinterModel : public QObject
{
    Q_OBJECT

    EmulatorConfig config;

private Q_SLOTS:
    void init() { config = EmulatorConfig(); }

    void clockAndDateRules()
    {
        PrinterModel m(config);
        Clock clock;
        clock.attach(m);
        QCOMPARE(props(run(m, "ReadDateTime"), {"DateTime", "DateYear"}), QStringLiteral("2026-03-10T09:30:00|26"));

        QVERIFY(run(m, "SetDateTime", {"15", "3", "2026", "8", "5"}).isOk());
        clock.now = clock.now.addSecs(90); // the printer's clock runs on by itself
        QCOMPARE(run(m, "ReadDateTime").property("DateTime"), QStringLiteral("2026-03-15T08:06:30"));
        QCOMPARE(run(m, "SetDateTime", {"31", "2", "2026", "8", "5"}).errorCode(), 10);
        QCOMPARE(run(m, "SetDateTime", {"1", "3", "2026", "25", "0"}).errorCode(), 10);

        QVERIFY(sell(m, 1, 10).isOk());
        QCOMPARE(run(m, "SetDateTime", {"16", "3", "2026", "8", "0"}).errorCode(), 23);
        QVERIFY(payCash(m).isOk());
        QCOMPARE(run(m, "ReadClosureState", {"1"}).property("ClosureState"), QStringLiteral("2"));
        QCOMPARE(run(m, "SetDateTime", {"16", "3", "2026", "8", "0"}).errorCode(), 17);

        QVERIFY(run(m, "FiscalClosure", {"1"}).isOk()); // at 15-03-2026 08:06:30
        QCOMPARE(run(m, "ReadClosureState", {"1"}).property("ClosureState"), QStringLiteral("1"));
        const Reply before = run(m, "SetDateTime", {"14", "3", "2026", "23", "59"});
        QVERIFY(before.result == -1 && before.errorCode() == 9);
        QCOMPARE(run(m, "SetDateTime", {"15", "3", "2026", "8", "5"}).errorCode(), 9);
        QVERIFY(run(m, "SetDateTime", {"15", "3", "2026", "8", "6"}).isOk()); // the closure's own minute
        QVERIFY(run(m, "SetDateTime", {"20", "3", "2026", "12", "0"}).isOk());
    }

    void headerOnlyAtClosureStateOne()
    {
        PrinterModel m(config);
        Reply line = run(m, "ReadHeaderLine", {"1"});
        QCOMPARE(line.property("HeaderLineText").size(), 40);
        QCOMPARE(line.property("HeaderLineText").trimmed(), QStringLiteral("KELVO DEMO S.R.L."));

        const QByteArray text = Cp1252::encode(QStringLiteral("  CAFFÈ DA MARIO €  "));
        QVERIFY(run(m, "WriteHeaderStyle", {"2", "3"}).isOk());
        QVERIFY(run(m, "WriteHeaderLine", {"2", text}).isOk());
        QCOMPARE(run(m, "ReadHeaderLine", {"2"}).property("HeaderLineText"),
                 QStringLiteral("  CAFFÈ DA MARIO €  ").leftJustified(40));
        QCOMPARE(run(m, "ReadHeaderStyle", {"2"}).property("HeaderStyle"), QStringLiteral("3"));
        QCOMPARE(run(m, "WriteHeaderLine", {"3", QByteArray(41, 'X')}).errorCode(), 19);
        QVERIFY(run(m, "WriteHeaderLine", {"3", QByteArray(40, 'X')}).isOk());
        QCOMPARE(run(m, "WriteHeaderLine", {"7", "X"}).errorCode(), 16);
        QCOMPARE(run(m, "WriteHeaderStyle", {"1", "5"}).errorCode(), 13);
        QCOMPARE(run(m, "ReadHeaderLine", {"0"}).errorCode(), 16);

        // The closing pseudo-lines: 98 then 99, which prints the new header.
        QCOMPARE(run(m, "WriteHeaderLine", {"99", ""}).errorCode(), 11);
        QCOMPARE(run(m, "WriteHeaderLine", {"98", "X"}).errorCode(), 13);
        QVERIFY(run(m, "WriteHeaderLine", {"98", ""}).isOk());
        QVERIFY(run(m, "WriteHeaderLine", {"99", ""}).isOk());
        QVERIFY(m.context().roll.tail().join('\n').contains(QStringLiteral("C A F F È   D A   M A R I O")));

        QVERIFY(sell(m, 1, 2).isOk());
        QCOMPARE(run(m, "WriteHeaderLine", {"1", "NUOVA"}).errorCode(), 23);
        QVERIFY(payCash(m).isOk());
        QCOMPARE(run(m, "WriteHeaderLine", {"1", "NUOVA"}).errorCode(), 17);
        QCOMPARE(run(m, "WriteHeaderStyle", {"1", "1"}).errorCode(), 17);
        QCOMPARE(run(m, "WriteHeaderLine", {"98", ""}).errorCode(), 17);
        QCOMPARE(run(m, "ReadHeaderLine", {"1"}).property("HeaderLineText").trimmed(), QStringLiteral("KELVO DEMO S.R.L."));
        QVERIFY(run(m, "FiscalClosure", {"1"}).isOk());
        QVERIFY(run(m, "WriteHeaderLine", {"1", "NUOVA"}).isOk());
    }

    void oldFirmwareHasNarrowHeaderAndNoRawChannel()
    {
        config.firmware = QStringLiteral("1.10");
        PrinterModel m(config);
        QCOMPARE(run(m, "ReadPrinterInfo", {"1"}).property("FirmwareVersion"), QStringLiteral("1.10"));
        QCOMPARE(run(m, "ReadHeaderLine", {"4"}).property("HeaderLineText").size(), 27);
        QCOMPARE(run(m, "WriteHeaderLine", {"1", QByteArray(28, 'A')}).errorCode(), 19);
        QVERIFY(run(m, "WriteHeaderLine", {"1", QByteArray(27, 'A')}).isOk());
        QCOMPARE(run(m, "OpenRawChannel", {"1", "FPEXTENDEDGRAPHIC"}).errorCode(), 16);
        QVERIFY(run(m, "LoadLogoFile", {QByteArray(300, '\x5a')}).isOk());
        QCOMPARE(m.memory().logos.size(), 1);

        config.model = EmulatorConfig::Model::KX81; // firmware 1.x of another model is not old
        config.serial = QStringLiteral("QO41000007");
        PrinterModel kx81(config);
        QCOMPARE(run(kx81, "ReadHeaderLine", {"4"}).property("HeaderLineText").size(), 40);
        QCOMPARE(run(kx81, "ReadMatricola", {"1"}).property("MatricolaNumber"), QStringLiteral("7"));
    }

    void closureRefusedWithOpenReceiptAndRecorded()
    {
        config.resets = 41;
        PrinterModel m(config);
        Clock clock;
        clock.attach(m);
        QVERIFY(sell(m, 1, 10).isOk());
        QCOMPARE(run(m, "FiscalClosure", {"1"}).errorCode(), 23);
        QVERIFY(payCash(m).isOk());
        QVERIFY(sell(m, 2, 5, 50).isOk());
        QVERIFY(payCash(m).isOk());
        QCOMPARE(run(m, "ReadClosureState", {"1"}).property("ClosureState"), QStringLiteral("3"));
        QCOMPARE(run(m, "FiscalClosure", {"0"}).errorCode(), 25);
        QVERIFY(run(m, "FiscalClosure", {"1"}).isOk());

        QCOMPARE(run(m, "ReadAzzeramenti").property("Azzeramenti"), QStringLiteral("42"));
        QCOMPARE(m.memory().fiscalMemory.size(), 1);
        const auto &z = m.memory().fiscalMemory[0];
        QVERIFY(z.number == 42 && z.receipts == 2 && z.total == Currency::fromScaled(155000));
        QVERIFY(m.memory().day.isEmpty());
        QCOMPARE(m.memory().period.receipts, 2);

        // Receipt numbers start again after the closure.
        QVERIFY(sell(m, 1, 1).isOk());
        QVERIFY(payCash(m).isOk());
        QCOMPARE(m.memory().journal.entries().last().number, 1);
        QVERIFY(run(m, "PrintFiscalMemory", {"1"}).isOk());
        QVERIFY(m.context().roll.tail().join('\n').contains(QStringLiteral("Z 0042 10-03-2026")));
    }

    void journalReadLineByLineEndsWith3102()
    {
        PrinterModel m(config);
        Clock clock;
        clock.attach(m);
        QVERIFY(sell(m, 1, 1).isOk() && payCash(m).isOk());
        QVERIFY(sell(m, 2, 2).isOk() && payCash(m).isOk());
        QVERIFY(run(m, "PrintXFinanziarioGiorno", {"1"}).isOk());
        QStringList expected;
        for (const JournalEntry &e : m.memory().journal.entries())
            expected += e.lines;
        QCOMPARE(m.memory().journal.entries().size(), 3);

        QStringList got;
        Reply r = run(m, "ReadDgfeByDate", {"1", "10", "3", "2026", "10", "3", "2026", "1"});
        while (r.isOk()) {
            got << r.property("DgfeLine");
            if (r.property("InfoCode") == QLatin1String("3102"))
                break;
            QCOMPARE(r.property("InfoCode"), QStringLiteral("0"));
            r = run(m, "ReadDgfeByDate", {"1", "10", "3", "2026", "10", "3", "2026", "0"});
        }
        QCOMPARE(got, expected); // the last line came with 3102 and is part of the data
        QCOMPARE(props(run(m, "ReadDgfeByDate", {"1", "10", "3", "2026", "10", "3", "2026", "0"}), {"InfoCode", "DgfeLine"}),
                 QStringLiteral("3102|"));

        Reply empty = run(m, "ReadDgfeByDate", {"1", "9", "3", "2026", "9", "3", "2026", "1"});
        QVERIFY(empty.isOk());
        QCOMPARE(empty.property("InfoCode"), QStringLiteral("3102"));
        QCOMPARE(props(run(m, "ReadDgfeByNumber", {"1", "9", "3", "2026", "1", "9", "1"}), {"InfoCode", "DgfeLine"}),
                 QStringLiteral("3102|"));
        QCOMPARE(run(m, "ReadDgfeByDate", {"1", "11", "3", "2026", "10", "3", "2026", "1"}).errorCode(), 10);

        got.clear();
        r = run(m, "ReadDgfeByNumber", {"1", "10", "3", "2026", "2", "2", "1"});
        for (; r.isOk(); r = run(m, "ReadDgfeByNumber", {"1", "10", "3", "2026", "2", "2", "0"})) {
            got << r.property("DgfeLine");
            if (r.property("InfoCode") == QLatin1String("3102"))
                break;
        }
        QCOMPARE(got, m.memory().journal.entries()[1].lines);
        QVERIFY(got.join('\n').contains(QStringLiteral("SC. N. 0002")));

        PrinterModel fresh(config);
        QCOMPARE(run(fresh, "ReadDgfeByDate", {"1", "10", "3", "2026", "10", "3", "2026", "0"}).errorCode(), 11);
        QCOMPARE(run(fresh, "PrintDgfeByDate", {"1", "1", "1", "2026", "31", "12", "2026"}).errorCode(), 12);
        QVERIFY(run(m, "PrintDgfeByNumber", {"1", "10", "3", "2026", "1", "2"}).isOk());
    }

    void tableRanges_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::newRow("iva") << QByteArray("ReadIva") << 1 << 4;
        QTest::newRow("departments (configured)") << QByteArray("ReadReparto") << 1 << 25;
        QTest::newRow("cards") << QByteArray("ReadCarta") << 1 << 10;
        QTest::newRow("tickets") << QByteArray("ReadTicket") << 1 << 10;
        QTest::newRow("cash") << QByteArray("ReadContante") << 1 << 5;
        QTest::newRow("cash preset") << QByteArray("ReadContantePredefinito") << 1 << 5;
        QTest::newRow("operators") << QByteArray("ReadOperatore") << 1 << 12;
        QTest::newRow("ps2") << QByteArray("ReadPS2") << 0 << 255;
        QTest::newRow("promos") << QByteArray("ReadPromo") << 1 << 100;
        QTest::newRow("flags (configured)") << QByteArray("ReadFlag") << 1 << 30;
        QTest::newRow("params (configured)") << QByteArray("ReadParam") << 1 << 20;
        QTest::newRow("header") << QByteArray("ReadHeaderLine") << 1 << 6;
    }

    void tableRanges()
    {
        QFETCH(QByteArray, command);
        QFETCH(int, first);
        QFETCH(int, last);
        config.departments = 25;
        config.flags = 30;
        config.params = 20;
        PrinterModel m(config);
        auto read = [&](int n) { return m.execute(command, {num(n)}); };
        QCOMPARE(read(first - 1).errorCode(), 16);
        QVERIFY(read(first).isOk());
        QVERIFY(read(last).isOk());
        const Reply beyond = read(last + 1);
        QVERIFY(beyond.result == -1 && beyond.errorCode() == 16);
    }

    void tableWritesReadBack()
    {
        PrinterModel m(config);
        const QByteArray desc = Cp1252::encode(QStringLiteral("PIÙ FRUTTA E VERDURA €"));
        QVERIFY(run(m, "WriteReparto", {"3", desc, "10000", "0", "0", "0", "2", "500000", "1", "2", ""}).isOk());
        QCOMPARE(props(run(m, "ReadReparto", {"3"}), {"RepartoDescrizione", "RepartoIva", "RepartoLimite", "RepartoScontRiass",
                                                      "RepartoGrpMerc"}),
                 QStringLiteral("PIÙ FRUTTA E VERDURA|2|500000|1|2")); // the description kept to 20
        QCOMPARE(run(m, "WriteReparto", {"3", "X", "0", "0", "0", "0", "5", "0", "0", "0", ""}).errorCode(), 13);
        QCOMPARE(run(m, "WriteReparto", {"3", "X", "0"}).errorCode(), 31);

        QVERIFY(run(m, "WriteIva", {"2", "22.5"}).isOk());
        QCOMPARE(run(m, "ReadIva", {"2"}).property("IvaAliquota"), QStringLiteral("22.5"));
        QCOMPARE(run(m, "WriteIva", {"1", "100"}).errorCode(), 13);
        QCOMPARE(run(m, "WriteIva", {"1", "abc"}).errorCode(), 13);

        QVERIFY(run(m, "WritePromo", {"7", "2", "3", "123456", "PROMO", "25000", "1", "1", ""}).isOk());
        QCOMPARE(props(run(m, "ReadPromo", {"7"}), {"PromoTipo", "PromoRichiamo", "PromoBarcode", "PromoValore"}),
                 QStringLiteral("2|3|123456|25000"));

        QVERIFY(run(m, "WriteContante", {"4", "BUONI"}).isOk());
        QVERIFY(run(m, "WriteContantePredefinito", {"4", "200000"}).isOk());
        QCOMPARE(run(m, "ReadContante", {"4"}).property("ContanteDescrizione"), QStringLiteral("BUONI"));
        QCOMPARE(run(m, "ReadContantePredefinito", {"4"}).property("ContanteImporto"), QStringLiteral("200000"));
        QCOMPARE(run(m, "WriteContantePredefinito", {"4", "-1"}).errorCode(), 13);

        QVERIFY(run(m, "WriteOperatore", {"12", "ANNA", "1234", "2.5"}).isOk());
        QCOMPARE(run(m, "ReadOperatore", {"12"}).property("OperatorePercentuale"), QStringLiteral("2.5"));
        QVERIFY(run(m, "WritePS2", {"255", "77"}).isOk());
        QCOMPARE(run(m, "ReadPS2", {"255"}).property("PS2Funzione"), QStringLiteral("77"));

        QCOMPARE(run(m, "WriteParam", {"7", "26"}).errorCode(), 13);
        QVERIFY(run(m, "WriteParam", {"7", "25"}).isOk());
        QCOMPARE(props(run(m, "ReadParam", {"7"}), {"ParamNumber", "ParamValue"}), QStringLiteral("7|25"));
        QCOMPARE(run(m, "WriteFlag", {"3", "2"}).errorCode(), 13);
        QCOMPARE(run(m, "ReadFlag", {"12"}).property("FlagValue"), QStringLiteral("1"));

        QCOMPARE(run(m, "Busy").errorCode(), 16); // local members of the control are no commands
        QVERIFY(m.takeChanged());
        QVERIFY(run(m, "WritePS2", {"255", "77"}).isOk());
        QVERIFY(!m.takeChanged()); // the same value again changes nothing
    }

    void receiptWithPaymentsAndResidue()
    {
        PrinterModel m(config);
        QVERIFY(sell(m, 1, 10).isOk());
        QVERIFY(run(m, "SellReparto", {"1", "3", "ARANCE", euro(2, 50), "2", "1"}).isOk());
        QCOMPARE(run(m, "PayReceipt", {"1", "", euro(20), "2", "0", "1"}).errorCode(), 20); // card beyond the due
        Reply cash = payCash(m, 5);
        QCOMPARE(cash.property("PaymentResidue"), QStringLiteral("125000"));
        QCOMPARE(run(m, "ReadPrinterInfo", {"1"}).property("PrinterStatus"), QStringLiteral("0013"));
        QCOMPARE(sell(m, 1, 1).errorCode(), 24);
        Reply tickets = run(m, "PayReceipt", {"1", "", euro(5, 29), "3", "2", "1"});
        QCOMPARE(tickets.property("PaymentResidue"), QStringLiteral("19200"));
        Reply rest = run(m, "PayReceipt", {"1", "", "0", "1", "0", "1"}); // cheque for the whole rest
        QCOMPARE(rest.property("PaymentResidue"), QStringLiteral("0"));
        QVERIFY(!m.context().receipt);
        QCOMPARE(m.memory().day.payments.value(0).amount, Currency::fromUnits(5));
        QCOMPARE(m.memory().day.payments.value(3).amount, Currency::fromScaled(105800));
        QCOMPARE(m.memory().day.payments.value(1).amount, Currency::fromScaled(19200));
        QCOMPARE(m.memory().day.net(), Currency::fromScaled(175000));

        QVERIFY(sell(m, 1, 3, 20).isOk());
        QVERIFY(payCash(m, 10).isOk());
        const QString roll = m.context().roll.tail().join('\n');
        QVERIFY(roll.contains(QRegularExpression(QStringLiteral("RESTO +6,80"))));
        QCOMPARE(m.memory().day.change, Currency::fromScaled(68000));

        QVERIFY(sell(m, 1, 8).isOk());
        QCOMPARE(run(m, "PayContanteDesc", {"1", "5", euro(8)}).errorCode(), 22);
        QCOMPARE(run(m, "PayContanteDesc", {"1", "6", euro(8)}).errorCode(), 16);
        QCOMPARE(run(m, "PayContanteDesc", {"1", "2", euro(3)}).property("PaymentResidue"), QStringLiteral("50000"));
        QCOMPARE(run(m, "PayContanteDesc", {"1", "1", "0"}).property("PaymentResidue"), QStringLiteral("0"));
    }

    void saleRefusals()
    {
        PrinterModel m(config);
        QCOMPARE(sell(m, 9, 1).errorCode(), 22);   // within the table, never programmed
        QCOMPARE(sell(m, 41, 1).errorCode(), 16);  // beyond the table
        QCOMPARE(sell(m, 5, 150).errorCode(), 21); // CAFFÈ: limit 100,00
        QCOMPARE(sell(m, 1, 1, 0, "", 0).errorCode(), 25);
        QCOMPARE(sell(m, 1, 0).errorCode(), 13);
        QCOMPARE(payCash(m).errorCode(), 11);
        QCOMPARE(run(m, "StornoReparto", {"1", "", "1", euro(1), "1", "1"}).errorCode(), 11);
        QCOMPARE(run(m, "PrintSubtotal", {"1"}).errorCode(), 11);
        QVERIFY(!m.context().receipt);

        QVERIFY(sell(m, 5, 100).isOk());
        QVERIFY(sell(m, 1, 2).isOk());
        QCOMPARE(sell(m, 1, 2, 0, "", 2).errorCode(), 11); // another operator within the receipt
        QCOMPARE(run(m, "StornoReparto", {"1", "", "1", euro(5), "1", "1"}).errorCode(), 12);
        QVERIFY(run(m, "StornoReparto", {"1", "", "1", euro(2), "1", "1"}).isOk());
        QVERIFY(run(m, "PrintSubtotal", {"1"}).isOk());
        QVERIFY(payCash(m).isOk());
        QCOMPARE(m.memory().day.voids, Currency::fromUnits(2));
        QCOMPARE(m.memory().day.net(), Currency::fromUnits(100));

        QVERIFY(run(m, "WriteFlag", {"13", "1"}).isOk()); // OBBLIGA SUBTOTALE
        QVERIFY(sell(m, 1, 2).isOk());
        QCOMPARE(payCash(m).errorCode(), 11);
        QVERIFY(run(m, "PrintSubtotal", {"1"}).isOk());
        QVERIFY(payCash(m).isOk());
    }

    void discountsAndSurcharges()
    {
        PrinterModel m(config);
        QVERIFY(sell(m, 1, 10).isOk());                                   // 4%
        QVERIFY(run(m, "ScontoPercReparto", {"1", "10"}).isOk());         // -1,00
        QCOMPARE(run(m, "AbbuonoReparto", {"1", euro(1)}).errorCode(), 11); // the item was adjusted already
        QVERIFY(sell(m, 2, 20).isOk());                                   // 10%
        QCOMPARE(run(m, "AbbuonoReparto", {"1", euro(25)}).errorCode(), 20);
        QCOMPARE(run(m, "ScontoPercReparto", {"1", "0"}).errorCode(), 13);
        QVERIFY(run(m, "AumentoReparto", {"1", euro(2)}).isOk());
        QVERIFY(run(m, "AbbuonoTotale", {"1", euro(1)}).isOk());
        QCOMPARE(sell(m, 1, 1).errorCode(), 11);                          // after a subtotal adjustment
        QVERIFY(run(m, "AumentoPercTotale", {"1", "10"}).isOk());         // +3,00 on 30,00
        QCOMPARE(payCash(m).property("PaymentResidue"), QStringLiteral("0"));

        const Totals &day = m.memory().day;
        QCOMPARE(day.sales, Currency::fromUnits(30));
        QCOMPARE(day.discounts, Currency::fromUnits(2));
        QCOMPARE(day.surcharges, Currency::fromUnits(5));
        QCOMPARE(day.net(), Currency::fromUnits(33));
        Currency vat;
        for (const Bucket &b : day.vat)
            vat = vat + b.amount;
        QCOMPARE(vat, day.net()); // the subtotal's adjustments are shared among the VAT rows
        QCOMPARE(day.departments.value(1).amount, Currency::fromUnits(9));
        QCOMPARE(day.departments.value(2).amount, Currency::fromUnits(22));
    }

    void learningModeMakesNonFiscalReceipts()
    {
        PrinterModel m(config);
        QVERIFY(run(m, "WriteFlag", {"1", "1"}).isOk());
        QVERIFY(sell(m, 1, 4).isOk());
        QCOMPARE(run(m, "ReadPrinterInfo", {"1"}).property("PrinterStatus"), QStringLiteral("0012"));
        QCOMPARE(run(m, "WriteFlag", {"1", "0"}).errorCode(), 23);
        QVERIFY(payCash(m).isOk());
        QCOMPARE(run(m, "ReadClosureState", {"1"}).property("ClosureState"), QStringLiteral("1"));
        QCOMPARE(m.memory().day.receipts, 0);
        QCOMPARE(m.memory().day.nonFiscal, 1);
        QCOMPARE(m.memory().journal.entries().last().kind, QStringLiteral("NON FISCALE"));
        QVERIFY(m.memory().journal.entries().last().lines.join('\n').contains(QStringLiteral("MODALITA' APPRENDIMENTO")));
        QVERIFY(run(m, "WriteFlag", {"1", "0"}).isOk());
        QVERIFY(sell(m, 1, 4).isOk());
        // Fiscal receipt open; the cash payment before opened the drawer (flag 26).
        QCOMPARE(run(m, "ReadPrinterInfo", {"1"}).property("PrinterStatus"), QStringLiteral("0000"));
    }

    void conditionsShowInStatusAndRefusals()
    {
        PrinterModel m(config);
        Clock clock;
        clock.attach(m);
        auto status = [&] { return run(m, "ReadPrinterInfo", {"1"}).property("PrinterStatus"); };
        auto dgfe = [&] { return run(m, "ReadDgfeStatus", {"1"}).property("DgfeState"); };
        QCOMPARE(status(), QStringLiteral("0011"));
        m.setPaperOut(true);
        QCOMPARE(status(), QStringLiteral("2011"));
        QCOMPARE(sell(m, 1, 1).errorCode(), 2);
        QVERIFY(run(m, "ReadIva", {"1"}).isOk()); // reading needs no paper
        m.setOffline(true);
        QCOMPARE(status(), QStringLiteral("3011"));
        QCOMPARE(run(m, "PrintXFinanziarioGiorno", {"1"}).errorCode(), 3);
        m.setOffline(false);
        m.setPaperOut(false);

        m.setJournalCondition(ElectronicJournal::Condition::NearFull);
        QCOMPARE(status() + dgfe(), QStringLiteral("01111"));
        QVERIFY(sell(m, 1, 1).isOk() && payCash(m).isOk());
        clock.now = clock.now.addSecs(6); // the drawer that the cash payment opened is shut again
        m.setJournalCondition(ElectronicJournal::Condition::Full);
        QCOMPARE(status() + dgfe(), QStringLiteral("05114"));
        QCOMPARE(run(m, "ReadDgfeStatus", {"1"}).property("DgfePercent"), QStringLiteral("100"));
        QCOMPARE(sell(m, 1, 1).errorCode(), 1);
        QCOMPARE(run(m, "FiscalClosure", {"1"}).errorCode(), 1);
        m.setJournalCondition(ElectronicJournal::Condition::ToFormat);
        QCOMPARE(status() + dgfe(), QStringLiteral("02112"));
        m.setJournalCondition(ElectronicJournal::Condition::OtherMemory);
        QCOMPARE(status() + dgfe(), QStringLiteral("04113"));
        QCOMPARE(run(m, "FormatDgfe", {"1"}).errorCode(), 18);
        m.setJournalCondition(ElectronicJournal::Condition::Ok);

        QVERIFY(run(m, "OpenDrawer", {"1"}).isOk());
        QCOMPARE(status(), QStringLiteral("0001"));
        clock.now = clock.now.addSecs(6);
        QCOMPARE(status(), QStringLiteral("0011"));
    }

    void journalFillsUpByItself()
    {
        config.journalKb = 1;
        PrinterModel m(config);
        int receipts = 0;
        while (sell(m, 1, 1).isOk()) {
            QVERIFY(payCash(m).isOk());
            ++receipts;
            QVERIFY(receipts < 100);
        }
        QCOMPARE(sell(m, 1, 1).errorCode(), 1);
        QCOMPARE(run(m, "ReadDgfeStatus", {"1"}).property("DgfeState"), QStringLiteral("4"));
        QVERIFY(receipts >= 1);
    }

    void formatDgfeStartsANewMemory()
    {
        PrinterModel m(config);
        QVERIFY(sell(m, 1, 1).isOk() && payCash(m).isOk());
        QCOMPARE(run(m, "FormatDgfe", {"1"}).errorCode(), 17); // the day is open
        QVERIFY(run(m, "FiscalClosure", {"1"}).isOk());
        QVERIFY(run(m, "FormatDgfe", {"1"}).isOk());
        QCOMPARE(props(run(m, "ReadDgfeStatus", {"1"}), {"DgfeNumber", "DgfeState"}), QStringLiteral("2|0"));
        QCOMPARE(m.memory().journal.entries().size(), 1);
        QCOMPARE(m.memory().journal.entries().first().kind, QStringLiteral("INIZIALIZZAZIONE"));

        // A new card put in can be formatted with the day open.
        QVERIFY(sell(m, 1, 1).isOk() && payCash(m).isOk());
        m.setJournalCondition(ElectronicJournal::Condition::ToFormat);
        QVERIFY(run(m, "FormatDgfe", {"1"}).isOk());
        QCOMPARE(run(m, "ReadDgfeStatus", {"1"}).property("DgfeNumber"), QStringLiteral("3"));
    }

    void logoMemory()
    {
        PrinterModel m(config);
        const QByteArray opening("AGGIORNAMENTO LOGO GRAFICO....\n\r");
        const QByteArray closing("AGGIORNAMENTO LOGO GRAFICO TERMINATO\n\r");
        const QByteArray image(150, '\x1D'); // bytes that need escaping on the wire, too
        auto transfer = [&](qint64 announced, const QList<QByteArray> &pieces) {
            QVERIFY(run(m, "OpenRawChannel", {"1", "FPEXTENDEDGRAPHIC"}).isOk());
            QVERIFY(run(m, "BeginRawTransfer", {"1", num(announced), "0", ""}).isOk());
            for (const QByteArray &p : pieces)
                run(m, "SendRawData", {p});
            QVERIFY(run(m, "CloseRawChannel", {"1"}).isOk());
        };
        auto status = [&] { return run(m, "ReadPrinterInfo", {"1"}).property("PrinterStatus"); };

        transfer(opening.size() + image.size() + closing.size(), {opening, image.left(100), image.mid(100), QByteArray(), closing});
        QCOMPARE(m.memory().logos.size(), 1);
        QCOMPARE(m.memory().logos[0].data, image);
        QCOMPARE(status(), QStringLiteral("0011"));

        transfer(opening.size() + closing.size() + 1, {opening, closing}); // one byte short
        QCOMPARE(status(), QStringLiteral("0014"));
        transfer(opening.size() + closing.size(), {opening, closing}); // an empty logo
        QCOMPARE(status(), QStringLiteral("0014"));
        QCOMPARE(m.memory().logos.size(), 1);

        QVERIFY(run(m, "WriteParam", {"9", "2"}).isOk());
        QVERIFY(run(m, "WriteFlag", {"26", "0"}).isOk()); // no drawer opening on cash
        QVERIFY(sell(m, 1, 1).isOk() && payCash(m).isOk());
        QVERIFY(m.memory().journal.entries().last().lines.first().contains(QStringLiteral("[ LOGO 2 ]")));

        const QByteArray clear = QByteArray("CANCELLAZIONE AREA LOGHI...\n\r")
                                 + QByteArray::fromHex("1D2845030001494E1D284504000502020" "01D28450400050207001D28450400024F5554");
        QCOMPARE(clear.size(), 64);
        transfer(64, {clear.left(29), clear.mid(29)});
        QVERIFY(m.memory().logos.isEmpty());
        QCOMPARE(status(), QStringLiteral("0011"));

        QCOMPARE(run(m, "OpenRawChannel", {"1", "OTHERJOB"}).errorCode(), 16);
        QCOMPARE(run(m, "SendRawData", {"x"}).errorCode(), 11);
        QVERIFY(run(m, "CloseRawChannel", {"1"}).isOk()); // closing twice is harmless
        QCOMPARE(run(m, "LoadLogoFile", {""}).errorCode(), 13);
        QCOMPARE(status(), QStringLiteral("0014"));
    }

    void reportsAndTotalResets()
    {
        PrinterModel m(config);
        QVERIFY(sell(m, 1, 3, 0, "12").isOk());            // PLU 12
        QVERIFY(sell(m, 2, 1, 50, "8001234567890").isOk()); // promotion 1 (table 1)
        QCOMPARE(run(m, "PrintXRepartoGiorno", {"1", "0"}).errorCode(), 23);
        QVERIFY(payCash(m).isOk());
        QCOMPARE(m.memory().pluTotals.value(12), Currency::fromUnits(3));
        QCOMPARE(m.memory().promos[0].total, Currency::fromScaled(15000));

        QCOMPARE(run(m, "PrintXRepartoGiorno", {"1", "41"}).errorCode(), 16);
        QCOMPARE(run(m, "PrintXOperatorePeriodo", {"1", "13"}).errorCode(), 16);
        for (const char *x : {"PrintXFinanziarioGiorno", "PrintXFinanziarioPeriodo", "PrintXOrarioGiorno", "PrintXOrarioPeriodo"})
            QVERIFY2(run(m, x, {"1"}).isOk(), x);
        for (const char *x : {"PrintXOperatoreGiorno", "PrintXOperatorePeriodo", "PrintXRepartoGiorno", "PrintXRepartoPeriodo"})
            QVERIFY2(run(m, x, {"1", "0"}).isOk(), x);
        QVERIFY(run(m, "PrintXRepartoGiorno", {"1", "2"}).isOk());
        QVERIFY(m.memory().journal.entries().last().lines.join('\n').contains(QStringLiteral("2 FRUTTA")));
        QCOMPARE(m.memory().journal.entries().size(), 10);

        QCOMPARE(run(m, "ResetTotalePlu", {"1001"}).errorCode(), 16);
        QVERIFY(run(m, "ResetTotalePlu", {"12"}).isOk());
        QVERIFY(m.memory().pluTotals.isEmpty());
        QCOMPARE(run(m, "ResetTotalePromo", {"4", "0"}).errorCode(), 16);
        QCOMPARE(run(m, "ResetTotalePromo", {"1", "5"}).errorCode(), 13);
        QVERIFY(run(m, "ResetTotalePromo", {"2", "0"}).isOk());
        QCOMPARE(m.memory().promos[0].total, Currency::fromScaled(15000));
        QVERIFY(run(m, "ResetTotalePromo", {"1", "0"}).isOk());
        QCOMPARE(m.memory().promos[0].total, Currency());
    }

    void paperRollGrowsWhileRunning()
    {
        QTemporaryDir dir;
        PrinterModel m(config);
        const QString path = dir.filePath(QStringLiteral("roll.txt"));
        QVERIFY(m.context().roll.open(path, nullptr));
        QVERIFY(sell(m, 2, 1, 20, "MELE").isOk());
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString soFar = QString::fromUtf8(f.readAll()); // read by another reader, line by line
        QVERIFY(soFar.contains(QRegularExpression(QStringLiteral("MELE +1,20\n"))));
        QVERIFY(!soFar.contains(QStringLiteral("SC. N.")));
        QVERIFY(payCash(m).isOk());
        QVERIFY(QString::fromUtf8(f.readAll()).contains(QStringLiteral("SC. N. 0001")));
    }
};

QTEST_GUILESS_MAIN(TestPrinterModel)
#include "tst_PrinterModel.moc"
