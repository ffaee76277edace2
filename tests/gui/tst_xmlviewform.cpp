// SPDX-License-Identifier: GPL-3.0-or-later
// The programming screen over a scripted control: the order of the reading
// with one exchange per row, the rows that stay blank, the sections of flags
// that end at " NON PREVISTO.", the restore with the header last behind the
// closure, the flags written only where they differ, and the roads in and
// out through the file dialogs.
#include "FormTestEnv.h"
#include "ProgrammingPrinter.h"
#include "TestFiles.h"
#include "app/FiscordaForm.h"
#include "printer/SharedState.h"
#include "programming/ProgrammingGridModel.h"
#include "programming/XmlViewForm.h"
#include "ui/FileDialog.h"

#include <QHeaderView>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QRegularExpression>
#include <QTimer>
#include <QtTest>
#include <memory>

using Call = FakeFPControl::Call;

namespace {

// Consecutive calls of one name as "Name*count".
QStringList runs(const QStringList &names)
{
    QStringList out;
    for (int i = 0; i < names.size();) {
        int j = i;
        while (j < names.size() && names[j] == names[i])
            ++j;
        out << (j - i == 1 ? names[i] : names[i] + "*" + QString::number(j - i));
        i = j;
    }
    return out;
}

QStringList rowsOf(const ProgrammingGrid &g)
{
    QStringList rows;
    for (int r = 1; r < g.rows(); ++r)
        rows << g.row(r).join(QLatin1Char('|'));
    return rows;
}

} // namespace

class TestXmlViewForm : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

    QString writeProgrammingFile(const QByteArray &sections)
    {
        const QString path = env->folder.filePath("prog.xml");
        TestFiles::writeFile(path, "<settings>" + sections + "</settings>");
        return path;
    }

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.fileDialogs = true, .italian = true});
        gMaxNReparti = 3;
        XmlViewForm::FormMode = 1;
        XmlViewForm::XmlFile.clear();
        env->fake.setMatricola("QN");
        env->fake.setProperty("FirmwareVersion", "2.10");
    }
    void cleanup() { env.reset(); }

    void theReadingInItsOrder()
    {
        // The bar as each table starts, and the form on screen meanwhile.
        QStringList barAtStart;
        ProgrammingPrinter printer;
        printer.iva[0] = 22.5f;
        env->fake.handler = [&printer, &barAtStart](const Call &c, FakeFPControl &f) {
            auto *form = qobject_cast<XmlViewForm *>(QApplication::activeModalWidget());
            if (form && (f.calls.size() < 2 || f.calls[f.calls.size() - 2].name != c.name))
                barAtStart << c.name + "@" + QString::number(form->ProgressBar1->value());
            return printer.answer(c, f);
        };
        XmlViewForm form;
        QStringList expected{"ReadDateTime", "ReadIva*4", "ReadReparto*3", "ReadCarta*10", "ReadTicket*10",
                             "ReadFlag*3", "ReadParam*13"};
        for (int n = 1; n <= 6; ++n)
            expected << "ReadHeaderLine" << "ReadHeaderStyle";
        expected << "ReadParam*2" << "ReadPS2*256" << "ReadPromo*100";
        for (int n = 1; n <= 5; ++n)
            expected << "ReadContante" << "ReadContantePredefinito";
        QCOMPARE(runs(env->fake.callNames()), expected);
        QVERIFY(!form.isVisible()); // hidden again for the opener's exec()
        QCOMPARE(form.btnPrgSave->text(), QStringLiteral("Salva File"));
        QVERIFY(form.SSTab1->widget(2)->isAncestorOf(form.gridPS2));
        QVERIFY(form.gridRigaInt->isColumnHidden(3));
        QVERIFY(MsgBox::shownTexts().isEmpty());
        barAtStart.removeDuplicates();
        QCOMPARE(barAtStart.filter(QRegularExpression("^Read(Iva|Carta|Flag|PS2|Promo|Contante)@")),
                 QStringList({"ReadIva@0", "ReadCarta@1", "ReadFlag@2", "ReadPS2@2", "ReadPromo@3", "ReadContante@4"}));
        QCOMPARE(form.ProgressBar1->value(), 5);
        QVERIFY(form.ProgressBar1->updatesEnabled()); // the last step is drawn when the form shows again
        QVERIFY(form.ProgressBar1->isHidden()); // no full bar once the work is over

        const XmlViewTables &d = form.data;
        QCOMPARE(rowsOf(d.gridIva).first(), QStringLiteral("1|22,5"));
        QCOMPARE(rowsOf(d.gridRep), QStringList({"1|  REP 1|100,5|1|2|3", "2|  REP 2|100,5|2|2|3", "3|  REP 3|100,5|3|2|3"}));
        // The number that ended a section keeps its blank row; section 15 starts again at 1.
        QCOMPARE(d.gridFlag.rows() - 1, 3 + 13);
        QCOMPARE(d.gridFlag.row(3).join('|'), QStringLiteral("||"));
        QCOMPARE(d.gridFlag.row(4).join('|'), QStringLiteral("15|1|1"));
        QCOMPARE(d.flagRow, 15);
        // A normal line with as many blanks on each side is centred (4); other
        // styles never carry the mark.
        QCOMPARE(rowsOf(d.gridRigaInt), QStringList({"1|NEGOZIO" + QString(33, ' ') + "|normale|0", "|||",
                                                     "3|" + QString(17, ' ') + "CENTRO" + QString(17, ' ') + "|normale centrata|4",
                                                     "4|" + QString(17, ' ') + "DOPPIA" + QString(17, ' ') + "|doppia|2",
                                                     "|||", "|||"}));
        QCOMPARE(QList<int>({d.logoTesta, d.logoCoda}), QList<int>({9, 10}));
        QCOMPARE(d.gridPromoTable.text(1, 0), QStringLiteral("101")); // the printer's number
        QCOMPARE(d.gridContantiDesc.row(1).join('|'), QStringLiteral("1|CASSA 1|100"));
        // The screen shows what the data hold.
        QCOMPARE(form.gridFlag->model()->rowCount(), 16);
        QCOMPARE(form.gridPS2->model()->rowCount(), 256);
        QCOMPARE(form.gridRep->model()->data(form.gridRep->model()->index(2, 1)).toString(), QStringLiteral("  REP 3"));
        // Every header reads whole.
        for (QTableView *grid : form.findChildren<QTableView *>()) {
            const QHeaderView *header = grid->horizontalHeader();
            for (int c = 0; c < header->count(); ++c)
                QVERIFY2(header->isSectionHidden(c) || header->sectionSize(c) >= header->sectionSizeHint(c),
                         qPrintable(grid->objectName() + " " + QString::number(c)));
        }
    }

    void failedReadsLeaveBlankRows()
    {
        env->fake.handler = [](const Call &c, FakeFPControl &f) -> std::optional<int16_t> {
            const int n = c.args.value(0).toInt();
            if ((c.name == "ReadReparto" && n == 2) || (c.name == "ReadContantePredefinito" && n == 3)) // not told
                return int16_t(7);
            if (c.name == "ReadFlag" && n == 5) {
                f.setProperty("ErrorCode", "9"); // a refusal, but not the end of the section
                return int16_t(-1);
            }
            if (c.name == "ReadFlag" && n == 6) {
                f.setProperty("ErrorCode", "16");
                return int16_t(-1);
            }
            if (c.name == "ReadParam") {
                f.setProperty("ErrorCode", "16");
                return int16_t(-1);
            }
            return std::nullopt;
        };
        XmlViewForm form;
        // The rows of a failed department or cash read: tst_programmingtables::failedReadsAndBusy.
        QCOMPARE(form.data.gridFlag.rows() - 1, 6 + 1);
        QCOMPARE(form.data.gridFlag.row(5).join('|'), QStringLiteral("||"));
        QCOMPARE(form.data.gridFlag.row(6).join('|'), QStringLiteral("||"));
        // The logo parameters are the only failures told.
        QCOMPARE(MsgBox::shownTexts().size(), 2);
    }

    void aPrinterThatDoesNotAnswer()
    {
        env->fake.setDefaultResult("ReadDateTime", 1);
        XmlViewForm form;
        QCOMPARE(env->fake.callNames(), QStringList{"ReadDateTime"});
        QCOMPARE(MsgBox::shownTexts().size(), 1);
        QCOMPARE(form.ProgressBar1->value(), 0);
        QCOMPARE(form.data.gridIva.rows(), 1);
        QCOMPARE(form.data.gridRigaInt.rows(), 7);
        QVERIFY(form.btnPrgSave->isEnabled());
    }

    void savingFromTheReading()
    {
        XmlViewForm form;
        FileDialog::queueAnswer(std::nullopt);
        form.btnPrgSave->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Scrittura file annullata!"});
        const FileDialog::Asked asked = FileDialog::asked().value(0);
        QVERIFY(asked.save);
        QCOMPARE(asked.folder, env->folder.path() + "/KX90ProgQN41100123.xml");
        QCOMPARE(asked.filter, QStringLiteral("*.xml"));
        QVERIFY(!asked.askBeforeReplacing); // the save writes into an existing file

        MsgBox::clearShown();
        FileDialog::queueAnswer(env->folder.filePath("copia"));
        form.btnPrgSave->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Scrittura file terminata!"});
        QCOMPARE(form.xmlName, QStringLiteral("copia"));
        QCOMPARE(form.xmlFolder, env->folder.path());
        QVERIFY(TestFiles::contentOf(env->folder.filePath("copia.xml")).startsWith("<settings CPUVersion=\"2.10\""));
        QCOMPARE(form.ProgressBar1->value(), 5);
        QVERIFY(form.ProgressBar1->updatesEnabled());
        QVERIFY(form.ProgressBar1->isHidden());
    }

    void restoreInItsOrder()
    {
        const QString path = writeProgrammingFile(
            "<InstallIva Iva1=\"22\"/><InstallRep Desc1=\"A \" Lim1=\"1,5\"/><InstallCarteCredito Desc1=\"C\"/>"
            "<InstallTicket Desc1=\"T\" Imp1=\"2\"/><InstallFlagS14 f1=\"0\" f2=\"1\"/>"
            "<InstallFlagS15 f1=\"0\" f2=\"5\"/><InstallLogo Testa=\"12\"/><InstallInt R1=\"X\" TipoR1=\"1\"/>"
            "<InstallPS2 N0=\"3\"/><InstallPromoTable N2=\"2\" Desc2=\"P\" Tipo2=\"1\" Barcode2=\"\" Richiamo2=\"0\" "
            "Valore2=\"1\"/><InstallContantiDesc N1=\"1\" Desc1=\"D\" ImportoPredefinito1=\"2\"/>");
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = path;
        XmlViewForm form;
        QCOMPARE(form.btnPrgSave->text(), QStringLiteral("Riprogramma KX90"));
        QCOMPARE(env->fake.calls.size(), 0); // a file needs no printer
        QCOMPARE(form.ProgressBar1->value(), 5);

        env->fake.setProperty("FlagValue", "1");
        env->fake.setProperty("ParamValue", "0");
        env->fake.setProperty("ClosureState", "1");
        form.btnPrgSave->click();
        QStringList calls;
        for (const Call &c : env->fake.calls) {
            // The logo parameters belong to the logo sender.
            if ((c.name.endsWith("Param") && (c.args.value(0) == "9" || c.args.value(0) == "10"))
                || c.name.contains("Raw") || c.name == "LoadLogoFile")
                continue;
            calls << c.name + "(" + c.args.join(',') + ")";
        }
        QCOMPARE(calls, QStringList({"WriteIva(1,22)", "WriteReparto(1,A ,0,0,0,0,0,15000,0,0,)", "WriteCarta(1,C)",
                                     "WriteTicket(1,T,20000)",
                                     // flags: read, and written only where they differ
                                     "ReadFlag(1)", "WriteFlag(1,0)", "ReadFlag(2)", "ReadParam(1)", "ReadParam(2)",
                                     "WriteParam(2,5)", "WritePS2(0,3)",
                                     // the promotion by its place in the grid
                                     "WritePromo(1,1,0,,P,10000,1,1,)", "WriteContante(1,D)",
                                     "WriteContantePredefinito(1,20000)", "ReadClosureState(1)",
                                     "WriteHeaderLine(1,X)", "WriteHeaderStyle(1,2)", "WriteHeaderLine(2,)",
                                     "WriteHeaderLine(3,)", "WriteHeaderLine(4,)", "WriteHeaderLine(5,)",
                                     "WriteHeaderLine(6,)", "WriteHeaderLine(98,)", "WriteHeaderLine(99,)"}));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione stampante terminata!"});
        QVERIFY(form.btnPrgSave->isEnabled());
    }

    void theHeaderBehindTheClosure_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("closure");
        QTest::addColumn<int>("refused"); // the header line the printer refuses, 0 none
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("written"); // header lines sent
        const QString ask = "Per programmare la data bisogna fare una chiusura fiscale. Procedo con la chiusura fiscale?";
        const QString done = "Programmazione stampante terminata!";
        const QString refusal = "Errore del registratore di cassa: SCRITTA INVALIDA.\r\n";
        QTest::newRow("nothing since the closure") << 1 << 0 << 0 << 0 << QStringList{done} << 8;
        QTest::newRow("state 0") << 0 << 0 << 0 << 0 << QStringList{done} << 0;
        QTest::newRow("closure declined") << 3 << int(QMessageBox::No) << 0 << 0 << QStringList{ask, done} << 0;
        QTest::newRow("closure made") << 3 << int(QMessageBox::Yes) << 0 << 0 << QStringList{ask, done} << 8;
        QTest::newRow("closure failed") << 3 << int(QMessageBox::Yes) << -1 << 0 << QStringList{ask, done} << 0;
        QTest::newRow("state unreadable") << -99 << 0 << 0 << 0 << QStringList{done} << 0;
        // Told twice (by the header and by the run); the header ends there.
        QTest::newRow("second line refused") << 1 << 0 << 0 << 2 << QStringList{refusal, refusal, done} << 2;
    }
    void theHeaderBehindTheClosure()
    {
        QFETCH(int, state);
        QFETCH(int, answer);
        QFETCH(int, closure);
        QFETCH(int, refused);
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = writeProgrammingFile("<InstallInt R1=\"A\" TipoR1=\"0\" R2=\"B\" TipoR2=\"0\"/>");
        XmlViewForm form;
        if (state == -99)
            env->fake.setDefaultResult("ReadClosureState", 1);
        env->fake.setProperty("ClosureState", QString::number(state));
        env->fake.setProperty("ErrorCode", "19");
        env->fake.queueResult("FiscalClosure", int16_t(closure));
        for (int line = 1; line <= refused; ++line)
            env->fake.queueResult("WriteHeaderLine", int16_t(line == refused ? -1 : 0));
        if (answer)
            MsgBox::queueAnswer(QMessageBox::StandardButton(answer));
        form.btnPrgSave->click();
        QTEST(MsgBox::shownTexts(), "texts");
        QTEST(int(env->fake.count("WriteHeaderLine")), "written");
        QCOMPARE(env->fake.count("FiscalClosure"), answer == int(QMessageBox::Yes) ? 1 : 0);
    }

    void thePrintersOwnFile()
    {
        TestFiles::writeFile(env->folder.filePath("KX90ProgQN41100123.xml"),
                             "<settings><InstallIva Iva1=\"10\"/><InstallInt R1=\"A\" TipoR1=\"0\" PosR1=\"1\"/></settings>");
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = "KX90*.xml";
        XmlViewForm form;
        QCOMPARE(form.xmlName, QStringLiteral("KX90ProgQN41100123"));
        QCOMPARE(form.xmlFolder, QString());
        QCOMPARE(rowsOf(form.data.gridIva), QStringList{"1|10"});
        QCOMPARE(form.data.gridRigaInt.text(1, 1), QStringLiteral("A"));
    }

    void fromTheMainMenu()
    {
        FiscordaForm main(&env->fake);
        FileDialog::queueAnswer(std::nullopt);
        main.mXmlRead->trigger();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Lettura dati da file annullata!"});
        QCOMPARE(MsgBox::shown().first().icon, QMessageBox::Information);
        QCOMPARE(FileDialog::asked().first().folder, env->folder.path() + "/KX90*.xml");
        QCOMPARE(FileDialog::asked().first().filter, QStringLiteral("*.xml"));

        const QString path = writeProgrammingFile("<InstallIva Iva1=\"4\"/>");
        FileDialog::queueAnswer(path);
        QString seen;
        // Shown while it loads; looked at once the opener's exec() shows it.
        whenModal("XmlViewForm", [&seen](QWidget *w) {
            auto *form = static_cast<XmlViewForm *>(w);
            auto *timer = new QTimer(form);
            QObject::connect(timer, &QTimer::timeout, form, [form, timer, &seen] {
                if (!form->btnPrgSave->isEnabled() || !form->isVisible())
                    return;
                timer->stop();
                seen = form->btnPrgSave->text() + "|" + form->data.gridIva.text(1, 1);
                form->btnOk->click();
            });
            timer->start(10);
        });
        main.mXmlRead->trigger();
        QCOMPARE(seen, QStringLiteral("Riprogramma KX90|4"));
        QCOMPARE(XmlViewForm::FormMode, 2);
        QCOMPARE(XmlViewForm::XmlFile, path);
    }

    void closedWhileItReads()
    {
        // No cancel: CHIUDI during the reading closes the form once it is done.
        FiscordaForm main(&env->fake);
        int reads = 0;
        env->fake.handler = [&reads](const Call &c, FakeFPControl &) -> std::optional<int16_t> {
            reads += c.name.startsWith("Read") ? 1 : 0;
            return std::nullopt;
        };
        bool clicked = false;
        whenModal("XmlViewForm", [&clicked](QWidget *w) {
            clicked = true;
            static_cast<XmlViewForm *>(w)->btnOk->click();
            w->close();
        });
        main.mPrnRead->trigger();
        QVERIFY(clicked);
        QCOMPARE(env->fake.count("ReadContantePredefinito"), 5); // the reading went to its end
    }
};

QTEST_MAIN(TestXmlViewForm)
#include "tst_xmlviewform.moc"
