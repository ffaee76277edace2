// SPDX-License-Identifier: GPL-3.0-or-later
// The programming tables: their descriptions, the department bound, the
// generic row read and write through the control, and the grid model.
#include "ProgrammingPrinter.h"
#include "printer/SharedState.h"
#include "programming/ProgrammingGrid.h"
#include "programming/ProgrammingGridModel.h"
#include "programming/ProgrammingTables.h"
#include "settings/Conversions.h"

#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(TableId)

class TestProgrammingTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gFPControl = nullptr; }
    void cleanup()
    {
        gMaxNReparti = 40;
        Conv::setLocaleForTests(QLocale::system());
    }

    void descriptions_data()
    {
        QTest::addColumn<TableId>("id");
        QTest::addColumn<QString>("rows");      // first..last on the printer, then the file's last
        QTest::addColumn<QString>("file");      // element and key word
        QTest::addColumn<QList<int16_t>>("kinds");
        QTest::addColumn<QStringList>("headers");

        QTest::newRow("IVA") << TableId::Iva << "1..4 4" << "InstallIva Iva" << QList<int16_t>{3}
                             << QStringList{"n°", "valore"};
        QTest::newRow("Reparti") << TableId::Reparti << "1..40 999" << "InstallRep Desc" << QList<int16_t>{4}
                                 << QStringList{"n°", "descrizione", "limite", "iva", "scr. rias.", "grp. merc."};
        QTest::newRow("Carte") << TableId::CarteCredito << "1..10 10" << "InstallCarteCredito Desc"
                               << QList<int16_t>{0} << QStringList{"n°", "descrizione"};
        QTest::newRow("Ticket") << TableId::Ticket << "1..10 10" << "InstallTicket Desc" << QList<int16_t>{2}
                                << QStringList{"n°", "descrizione", "importo"};
        QTest::newRow("Contanti") << TableId::ContantiDesc << "1..5 5" << "InstallContantiDesc N" << QList<int16_t>{1, 6}
                                  << QStringList{"n°", "descrizione", "importo predefinito"};
        QTest::newRow("Operatori") << TableId::Operatori << "1..12 0" << " " << QList<int16_t>{5}
                                   << QStringList{"n°", "descrizione", "pwd opr.", "% opr."};
        QTest::newRow("Flag") << TableId::Flag << "1..99 99" << "InstallFlagS14 f" << QList<int16_t>{}
                              << QStringList{"n° flag", "posizione", "valore"};
        QTest::newRow("Intestazione") << TableId::Intestazione << "1..6 6" << "InstallInt R" << QList<int16_t>{}
                                      << QStringList{"n° riga", "contenuto", "tipo", ""};
        QTest::newRow("Logo") << TableId::Logo << "1..0 0" << "InstallLogo " << QList<int16_t>{} << QStringList{};
        QTest::newRow("PS2") << TableId::PS2 << "0..255 255" << "InstallPS2 N" << QList<int16_t>{}
                             << QStringList{"n° ", "funzione"};
        QTest::newRow("Promo") << TableId::PromoTable << "1..100 100" << "InstallPromoTable N" << QList<int16_t>{}
                               << QStringList{"n° ", "descrizione", "tipo ", "barcode", "richiamo", "valore"};
    }
    void descriptions()
    {
        // The columns' file words are checked by the programming file's bytes.
        QFETCH(TableId, id);
        const ProgrammingTable &t = Table(id);
        QFETCH(QString, rows);
        QCOMPARE(QStringLiteral("%1..%2 %3").arg(t.firstRow).arg(t.lastPrinterRow()).arg(t.fileLastRow), rows);
        QFETCH(QString, file);
        QCOMPARE(t.fileElement + " " + t.fileKeyWord, file);
        QFETCH(QList<int16_t>, kinds);
        QCOMPARE(t.editorKinds, kinds);
        QFETCH(QStringList, headers);
        QCOMPARE(t.headers(), headers);
        // A table the editor shows names its own kind back.
        for (int16_t k : kinds)
            QCOMPARE(EditorViewOf(k)->table, id);
        // A grid set up from the table holds the headers in row 0 and nothing else.
        ProgrammingGrid g;
        SetupGrid(g, t);
        QCOMPARE(g.rows(), 1);
        QCOMPARE(g.row(0), headers);
    }

    void departmentBound_data()
    {
        QTest::addColumn<int>("maxNReparti");
        QTest::newRow("none") << 0;
        QTest::newRow("default") << 40;
        QTest::newRow("a file's worth") << 999;
    }
    void departmentBound()
    {
        QFETCH(int, maxNReparti);
        gMaxNReparti = int16_t(maxNReparti);
        Conv::setLocaleForTests(QLocale::c());
        FakeFPControl fake;
        ProgrammingPrinter printer;
        printer.departments = 30;
        printer.attach(fake);
        ProgrammingGrid grid;
        const ProgrammingTable &rep = Table(TableId::Reparti);
        SetupGrid(grid, rep);
        ReadTableIntoGrid(fake, rep, grid);

        // One read per department of the settings, one grid row each; those
        // the printer does not have stay blank.
        QCOMPARE(fake.count("ReadReparto"), maxNReparti);
        QCOMPARE(grid.rows(), maxNReparti + 1);
        if (maxNReparti >= 30) {
            QCOMPARE(grid.row(30), QStringList({"30", "  REP 30", "100.5", "0", "2", "3"}));
        }
        for (int r = 31; r < grid.rows(); ++r)
            QCOMPARE(grid.row(r), QStringList(6));
    }

    void failedReadsAndBusy()
    {
        FakeFPControl fake;
        ProgrammingGrid grid;

        // Cash rows need both reads; a missing preset amount leaves no row at all.
        fake.handler = [](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            const int n = c.args.value(0).toInt();
            f.setProperty("ContanteNumber", QString::number(n));
            f.setProperty("ContanteDescrizione", "  CASSA  ");
            f.setProperty("ContanteImporto", "20000");
            return int16_t(c.name == "ReadContantePredefinito" && n == 2 ? 3 : 0);
        };
        const ProgrammingTable &cash = Table(TableId::ContantiDesc);
        SetupGrid(grid, cash);
        ReadTableIntoGrid(fake, cash, grid);
        QCOMPARE(grid.rows(), 5);
        QCOMPARE(grid.row(1), QStringList({"1", "CASSA", "2"}));
        QCOMPARE(grid.text(2, 0), QStringLiteral("3"));

        // Elsewhere a refused row keeps its place, blank; the loop's number
        // goes into column 0 whatever the printer says.
        fake.handler = [](const FakeFPControl::Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            f.setProperty("CartaNumber", "77");
            f.setProperty("CartaDescrizione", " VISA ");
            return int16_t(c.args.value(0) == "4" ? -1 : 0);
        };
        const ProgrammingTable &cards = Table(TableId::CarteCredito);
        ReadTableIntoGrid(fake, cards, grid);
        QCOMPARE(grid.rows(), 11);
        QCOMPARE(grid.row(3), QStringList({"3", " VISA "}));
        QCOMPARE(grid.row(4), QStringList(2));

        // A busy control ends the table silently, before any read.
        fake.busy = true;
        fake.clearCalls();
        ReadTableIntoGrid(fake, cards, grid);
        QCOMPARE(grid.rows(), 1);
        QCOMPARE(fake.calls.size(), 0);
    }

    void writesThroughTheDescriptions_data()
    {
        QTest::addColumn<TableId>("id");
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QString>("sent"); // every write, with its arguments
        // Departments: the prices and the reserved values always 0 and "";
        // a cell that is no number goes as 0.
        QTest::newRow("department") << TableId::Reparti << QStringList{"7", " PANE ", "12,5", "2", "x", "10"}
                                    << "WriteReparto(7| PANE |0|0|0|0|2|125000|0|10|)";
        QTest::newRow("promo: type through an Integer, then 1, 1, \"\"")
            << TableId::PromoTable << QStringList{"9", "OFFERTA", "3", "800123", "4", "0,5"}
            << "WritePromo(2|3|4|800123|OFFERTA|5000|1|1|)";
        QTest::newRow("cash: both writes") << TableId::ContantiDesc << QStringList{"3", "BUONI", "7"}
                                           << "WriteContante(3|BUONI) WriteContantePredefinito(3|70000)";
        QTest::newRow("VAT") << TableId::Iva << QStringList{"1", "22,5"} << "WriteIva(1|22.5)";
        QTest::newRow("PS2 key 0") << TableId::PS2 << QStringList{"0", "70000"} << "WritePS2(0|0)";
        QTest::newRow("operator") << TableId::Operatori << QStringList{"2", "ANNA", "1234", "2,5"}
                                  << "WriteOperatore(2|ANNA|1234|2.5)";
    }
    void writesThroughTheDescriptions()
    {
        QFETCH(TableId, id);
        QFETCH(QStringList, cells);
        QFETCH(QString, sent);
        Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
        FakeFPControl fake;
        fake.queueResult("WriteContante", 5); // the second write goes out all the same
        const ProgrammingTable &t = Table(id);
        const int16_t n = t.numberedByPosition ? 2 : CellInteger(cells[0]).value();
        const int16_t result = WriteRow(fake, t, n, cells);
        QCOMPARE(fake.sent('|').join(' '), sent);
        QCOMPARE(result, int16_t(0));
    }

    void restoreQualifiesRows()
    {
        FakeFPControl fake;
        ProgrammingGrid grid;
        const ProgrammingTable &promo = Table(TableId::PromoTable);
        SetupGrid(grid, promo);
        grid.addRow();                                             // blank: skipped
        grid.setRow(grid.addRow(), {"9", "A", "1", "", "", "2"}); // position 2, whatever column 0 says
        grid.setRow(grid.addRow(), {"1", "B", "x", "", "", "2"}); // type no number: skipped
        WriteGridToPrinter(fake, promo, grid);
        QCOMPARE(fake.count("WritePromo"), 1);
        QCOMPARE(fake.calls.first().args.mid(0, 3), QStringList({"2", "1", "0"}));
    }

    void sharedRules()
    {
        QCOMPARE(CentreMark(QString(10, ' ') + "BAR" + QString(10, ' ')), QStringLiteral(" centrata"));
        QCOMPARE(CentreMark("  BAR     "), QString()); // 2 and 5 blanks
        QCOMPARE(HeaderStyleWord(4, " centrata").value(), QStringLiteral("normale centrata"));
        QVERIFY(EndsFlagSection(-1, 16) && !EndsFlagSection(-1, 13) && !EndsFlagSection(3, 16));
        // Whole-number rates round halves to even, as the control does.
        QCOMPARE(QList<int>({RoundRate(22.5), RoundRate(23.5), RoundRate(0.4)}), QList<int>({22, 24, 0}));
        QCOMPARE(CellInteger("40000"), std::nullopt);
    }

    void modelFillsInOneReset()
    {
        ProgrammingGridModel model;
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy inserts(&model, &QAbstractItemModel::rowsInserted);
        model.fill([](ProgrammingGrid &g) {
            SetupGrid(g, Table(TableId::Reparti));
            for (int n = 1; n <= 999; ++n)
                g.setRow(g.addRow(), {QString::number(n), "REP"});
        });
        QCOMPARE(resets.count(), 1);
        QCOMPARE(changes.count() + inserts.count(), 0);
        QCOMPARE(model.rowCount(), 999);
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("descrizione"));
        QCOMPARE(model.data(model.index(998, 0)).toString(), QStringLiteral("999"));
        QVERIFY(model.data(model.index(0, 0), Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);

        // Single changes reach the view one by one.
        model.setText(5, 1, "NEW");
        const int row = model.addRow();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(inserts.count(), 1);
        QCOMPARE(row, 1000);
        QCOMPARE(model.data(model.index(4, 1)).toString(), QStringLiteral("NEW"));
    }
};

QTEST_MAIN(TestProgrammingTables)
#include "tst_programmingtables.moc"
