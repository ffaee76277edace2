// SPDX-License-Identifier: GPL-3.0-or-later
// The table editor against a scripted printer: what each kind shows, the VAT
// list and its defaults, the rounding of the rates, the writes of btnAdd, the
// 20-character cut, the per-printer file, and the departments as a step of
// the commissioning with the trip to the VAT rates.
#include "FormTestEnv.h"
#include "ProgrammingPrinter.h"
#include "TestFiles.h"
#include "printer/SharedState.h"
#include "programming/GridView.h"
#include "programming/ProgForm.h"
#include "settings/Conversions.h"
#include "programming/ProgrammingGridModel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {
QStringList comboItems(const QComboBox *combo)
{
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items << combo->itemText(i);
    return items;
}
} // namespace

class TestProgForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;
    ProgrammingPrinter printer;

    QString perPrinterFile() const { return env->folder.filePath("KX90ProgQN99123456.xml"); }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        Conv::setLocaleForTests(QLocale::c()); // the numbers below are written so
        printer = ProgrammingPrinter();
        printer.attach(env->fake);
        env->fake.setMatricola("QN", "99", "123456");
        gMaxNReparti = 40;
        ProgForm::WizardMode = false;
        ProgForm::TableKind = 0;
    }
    void cleanup() { env.reset(); }

    void whatEachKindShows_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QStringList>("shown");   // optional fields shown, with their labels' texts
        QTest::addColumn<QStringList>("firstRow"); // the grid's first row
        QTest::addColumn<QString>("desc");         // txtDesc after the first row was read

        QTest::newRow("cards") << 0 << "Carte di Credito" << 10 << QStringList{"descrizione:"}
                               << QStringList{"1", "CARTA 1"} << "CARTA 1";
        QTest::newRow("cash") << 1 << "Contanti con Descrizione" << 5 << QStringList{"descrizione:"}
                              << QStringList{"1", "CASSA 1"} << "CASSA 1";
        QTest::newRow("tickets") << 2 << "Ticket" << 10 << QStringList{"descrizione:", "Valore"}
                                 << QStringList{"1", "TICKET 1", "5.29"} << "TICKET 1";
        QTest::newRow("VAT") << 3 << "IVA" << 4 << QStringList{"Valore"} << QStringList{"1", "22"} << "22";
        QTest::newRow("departments") << 4 << "Reparti" << 40
                                     << QStringList{"descrizione:", "limite prezzo:", "iva (%):", "btnIva"}
                                     << QStringList{"1", "  REP 1", "100.5", "22", "2", "3"} << "REP 1";
        QTest::newRow("operators") << 5 << "Operatori" << 12
                                   << QStringList{"descrizione:", "password", "commissione:"}
                                   << QStringList{"1", "OPERATORE 1", "121", "2.5"} << "OPERATORE 1";
        // The amount stands beside the label of a description.
        QTest::newRow("preset cash") << 6 << "Contanti con Descrizione Predefiniti" << 5
                                     << QStringList{"descrizione:"} << QStringList{"1", "100"} << "100";
        QTest::newRow("no such table") << 9 << "" << 0 << QStringList{} << QStringList{} << "";
    }
    void whatEachKindShows()
    {
        QFETCH(int, kind);
        QFETCH(QString, caption);
        QFETCH(int, rows);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, firstRow);
        QFETCH(QString, desc);
        ProgForm::TableKind = int16_t(kind);
        ProgForm form;
        QCOMPARE(form.lblProg->text(), caption);
        QCOMPARE(form.gridModel->rowCount(), rows);
        QStringList visible;
        for (QLabel *l : {form.lblDesc, form.lblLimite, form.lblPercOpr, form.lblIva})
            if (!l->isHidden())
                visible << l->text();
        if (!form.btnIva->isHidden())
            visible << "btnIva";
        QCOMPARE(visible, shown);
        QCOMPARE(form.comboScontRiass->isHidden(), kind != 4);
        QCOMPARE(form.gridModel->grid().row(1).mid(0, firstRow.size()), firstRow);
        QCOMPARE(form.txtDesc->text(), desc);
        QCOMPARE(form.btnOK->text(), QStringLiteral("OK"));
        QVERIFY(MsgBox::shown().isEmpty());
        // Every header reads whole; a column wide enough keeps the table's width.
        const QHeaderView *header = form.gridProg->horizontalHeader();
        for (int c = 0; c < header->count(); ++c) {
            if (header->isSectionHidden(c))
                continue;
            const int designed = TwipsToPixels(form.gridModel->grid().columnWidth(c), form.gridProg->logicalDpiX());
            QCOMPARE(header->sectionSize(c), qMax(designed, header->sectionSizeHint(c)));
        }
    }

    void vatDefaults_data()
    {
        QTest::addColumn<QList<float>>("rates");
        QTest::addColumn<QStringList>("written");
        QTest::addColumn<QStringList>("items");
        const QStringList defaults{"WriteIva(1|4)", "WriteIva(2|10)", "WriteIva(3|20)"};
        QTest::newRow("all zero") << QList<float>{0, 0, 0, 0} << defaults << QStringList{"4", "10", "20", "0"};
        // The running total is rounded at each step, so 0.4 and 0.4 stay 0.
        QTest::newRow("below a half each") << QList<float>{0.4f, 0.4f, 0, 0} << defaults
                                           << QStringList{"4", "10", "20", "0"};
        QTest::newRow("row 4 alone counts") << QList<float>{0, 0, 0, 7} << QStringList{}
                                            << QStringList{"0", "0", "0", "7"};
        QTest::newRow("programmed") << QList<float>{22, 10, 5, 4} << QStringList{}
                                    << QStringList{"22", "10", "5", "4"};
    }
    void vatDefaults()
    {
        QFETCH(QList<float>, rates);
        QFETCH(QStringList, written);
        QFETCH(QStringList, items);
        std::copy(rates.begin(), rates.end(), printer.iva);
        ProgForm::TableKind = 4;
        ProgForm form;
        QCOMPARE(env->fake.sent(u'|', "Write"), written);
        QCOMPARE(comboItems(form.comboIVA), items);
    }

    void ratesAndTheirRounding()
    {
        const float rates[] = {22.5f, 23.5f, 10.4f, 4};
        std::copy(std::begin(rates), std::end(rates), printer.iva);
        ProgForm::TableKind = 3;
        ProgForm form;
        QCOMPARE(QList<int>(std::begin(form.tassaValues), std::end(form.tassaValues)), QList<int>({22, 24, 10, 4}));
        QCOMPARE(form.gridModel->grid().text(1, 1), QStringLiteral("22.5"));

        // A rate among the first three is refused; the fourth may be repeated.
        form.selectRow(4);
        form.txtDesc->setText("24");
        form.btnAdd->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Valore già presente!"});
        QVERIFY(env->fake.sent(u'|', "Write").isEmpty());
        MsgBox::clearShown();
        form.selectRow(1);
        form.txtDesc->setText("4");
        form.btnAdd->click();
        QCOMPARE(env->fake.sent(u'|', "Write"), QStringList{"WriteIva(1|4)"});
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione effettuata!"});
        QCOMPARE(form.tassaValues[0], int16_t(4));
        QCOMPARE(form.currentRow(), 1);
        form.btnOK->click();
        const QString file = QString::fromUtf8(TestFiles::contentOf(perPrinterFile()));
        QVERIFY2(file.contains(R"(<InstallIva Iva1="4" Iva2="23.5" Iva3="10.4" Iva4="4"/>)"), qPrintable(file));
    }

    void btnAddPerKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("fields"); // txtDesc, txtLimite, txtPercOpr
        QTest::addColumn<QString>("written");    // empty: nothing happens at all
        QTest::newRow("ticket") << 2 << 1 << QStringList{"PASTO", "7.5", ""} << "WriteTicket(1|PASTO|75000)";
        QTest::newRow("ticket, limit with letters") << 2 << 1 << QStringList{"PASTO", "7a", ""} << "";
        QTest::newRow("department") << 4 << 5 << QStringList{"PANE", "12", ""}
                                    << "WriteReparto(5|PANE|0|0|0|0|2|120000|2|3|)";
        QTest::newRow("department, blank limit") << 4 << 5 << QStringList{"PANE", "", ""} << "";
        QTest::newRow("operator") << 5 << 12 << QStringList{"ANNA", "77", "1.5"} << "WriteOperatore(12|ANNA|77|1.5)";
        QTest::newRow("operator, no commission") << 5 << 12 << QStringList{"ANNA", "77", ""} << "";
    }
    void btnAddPerKind()
    {
        QFETCH(int, kind);
        QFETCH(int, row);
        QFETCH(QStringList, fields);
        QFETCH(QString, written);
        ProgForm::TableKind = int16_t(kind);
        ProgForm form;
        form.selectRow(row);
        form.txtDesc->setText(fields[0]);
        form.txtLimite->setText(fields[1]);
        form.txtPercOpr->setText(fields[2]);
        if (kind == 4)
            form.comboIVA->setCurrentIndex(1);
        env->fake.clearCalls();
        form.btnAdd->click();
        QCOMPARE(env->fake.sent(u'|', "Write").join(' '), written);
        // A store reloads the table and reads the row again; a field that is
        // no number makes nothing happen at all.
        QCOMPARE(MsgBox::shownTexts(), written.isEmpty() ? QStringList() : QStringList{"Programmazione effettuata!"});
        QCOMPARE(env->fake.calls.isEmpty(), written.isEmpty());
        QCOMPARE(form.currentRow(), row);
    }

    void failedLoadReadsNoRowWhenShown_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("read");
        QTest::newRow("cards") << 0 << "ReadCarta";
        QTest::newRow("operators") << 5 << "ReadOperatore";
    }
    void failedLoadReadsNoRowWhenShown()
    {
        QFETCH(int, kind);
        QFETCH(QString, read);
        printer.refuse = {read + ":3"};
        ProgForm::TableKind = int16_t(kind);
        ProgForm form;
        env->fake.clearCalls();
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        form.gridProg->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        QCOMPARE(env->fake.count(read), 0);
        // A real change of row still reads it.
        form.gridProg->setCurrentIndex(form.gridModel->index(ProgrammingGridModel::toViewRow(2), 0));
        QCOMPARE(env->fake.callsOf(read).value(0).args.value(0), "2");
    }

    void refusalsAndBusy()
    {
        // A refused write is reported, the grid is not reloaded, no success message.
        printer.refuse = {"WriteReparto:2"};
        ProgForm::TableKind = 4;
        ProgForm form;
        form.selectRow(2);
        form.txtLimite->setText("5");
        env->fake.clearCalls();
        form.btnAdd->click();
        QCOMPARE(MsgBox::shownTexts().size(), 1);
        QVERIFY(!MsgBox::shownTexts().contains("Programmazione effettuata!"));
        QCOMPARE(env->fake.callNames(), QStringList{"WriteReparto"});

        // Busy: nothing goes out.
        env->fake.busy = true;
        env->fake.clearCalls();
        form.btnAdd->click();
        QVERIFY(env->fake.calls.isEmpty());

        // A password that is a number but not an Integer gets a message, not the end of the run.
        env->fake.busy = false;
        ProgForm::TableKind = 5;
        ProgForm operators;
        MsgBox::clearShown();
        operators.txtLimite->setText("70000");
        operators.txtPercOpr->setText("1");
        operators.btnAdd->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Valore fuori dai limiti consentiti!"});
    }

    void descriptionCutAtTwenty()
    {
        ProgForm::TableKind = 0;
        ProgForm form;
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        const QString long25 = "ABCDEFGHIJKLMNOPQRSTUVWXY";

        // Pressed by keyboard without leaving the field: all 25 go out.
        form.txtDesc->setFocus();
        form.txtDesc->setText(long25);
        env->fake.clearCalls();
        form.btnAdd_Click();
        QCOMPARE(env->fake.sent(u'|', "Write"), QStringList{"WriteCarta(1|" + long25 + ")"});

        // Leaving the field keeps the first 20.
        form.txtDesc->setFocus();
        form.txtDesc->setText(long25);
        form.btnOK->setFocus();
        QCOMPARE(form.txtDesc->text(), long25.left(20));
    }

    void departmentsStepOfTheCommissioning()
    {
        printer.departments = 3; // rows 4.. stay blank and end the saving
        ProgForm::WizardMode = true;
        ProgForm::TableKind = 4;
        ProgForm form;
        QCOMPARE(form.btnOK->text(), QStringLiteral("AVANTI"));
        QVERIFY(form.isHidden());

        // The flags come next in their chain mode: tst_commissioningchain.
        whenModal("InstallFlagForm", [](QWidget *w) { w->close(); });
        form.btnOK->click();
        QVERIFY(form.isHidden());
        const QString file = QString::fromUtf8(TestFiles::contentOf(perPrinterFile()));
        // Department 1 has VAT row 1 (22), 3 row 3 (5); the rates follow.
        QVERIFY2(file.contains(R"(Desc1="  REP 1" Lim1="100.5" Iva1="1" ScRias1="2" GrpMerc1="3")"), qPrintable(file));
        QVERIFY2(file.contains(R"(Desc3="  REP 3" Lim3="100.5" Iva3="3")"), qPrintable(file));
        QVERIFY(!file.contains("Desc4"));
        QVERIFY2(file.contains(R"(<InstallIva Iva1="22" Iva2="10" Iva3="5" Iva4="4"/>)"), qPrintable(file));
    }

    void tripFromTheShownFormComesBackToIt()
    {
        ProgForm::TableKind = 4;
        ProgForm form;
        QStringList seen; // captions of the ProgForm windows, in the order they came up
        whenModal("ProgForm", [&](QWidget *outer) {
            seen << static_cast<ProgForm *>(outer)->lblProg->text();
            whenModal("ProgForm", [&](QWidget *rates) {
                QCOMPARE(rates, static_cast<QWidget *>(&form)); // the same form, loaded as the rates only
                QCOMPARE(env->fake.count("ReadIva"), 4);
                seen << static_cast<ProgForm *>(rates)->lblProg->text() + " "
                            + static_cast<ProgForm *>(rates)->txtDesc->text();
                whenModal("ProgForm", [&](QWidget *again) {
                    seen << static_cast<ProgForm *>(again)->lblProg->text() + (again == &form ? " (same)" : "");
                    again->close();
                });
                static_cast<ProgForm *>(rates)->btnOK->click();
            });
            env->fake.clearCalls();
            static_cast<ProgForm *>(outer)->btnIva->click();
        });
        form.exec();
        QCOMPARE(seen, QStringList({"Reparti", "IVA 22", "Reparti (same)"}));
        QCOMPARE(ProgForm::TableKind, int16_t(4));
        QVERIFY(QString::fromUtf8(TestFiles::contentOf(perPrinterFile())).contains(R"(Iva1="22")"));
    }

    void closingByTheFrameSavesNothing()
    {
        ProgForm::TableKind = 4;
        ProgForm form;
        form.reject();
        QVERIFY(!QFile::exists(perPrinterFile()));
    }
};

QTEST_MAIN(TestProgForm)
#include "tst_progform.moc"
