// SPDX-License-Identifier: GPL-3.0-or-later
// The programming file: exact bytes, names, odd and broken files, locales.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "programming/ProgrammingFile.h"
#include "programming/ProgrammingFileName.h"
#include "programming/XmlViewTables.h"
#include "printer/SharedState.h"
#include "settings/Conversions.h"

#include <QtTest>

using TestFiles::contentOf;
using TestFiles::writeFile;

namespace {

const QLocale kItalian(QLocale::Italian, QLocale::Italy);
const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);

void useLocale(const QLocale &locale)
{
    QLocale::setDefault(locale);
    Conv::setLocaleForTests(locale);
}

// The decimal sign of the locale in use, for texts written with ','.
QString dec(QString text)
{
    return text.replace(QLatin1Char(','), Conv::locale().decimalPoint());
}

// A programming as a reading leaves it, with the rows a printer refused
// (blank) in between.
XmlViewTables knownProgramming()
{
    XmlViewTables t;
    t.SetupGrids();
    t.gridIva.setRow(t.gridIva.addRow(), {"1", "22"});
    t.gridIva.setRow(t.gridIva.addRow(), {"2", dec("10,5")});
    t.gridIva.addRow();
    t.gridRep.setRow(t.gridRep.addRow(), {"1", "PANE", "0", "4", "0", "0"});
    t.gridRep.addRow();
    t.gridRep.setRow(t.gridRep.addRow(), {"3", "", dec("100,5"), "1", "2", "3"});
    t.gridCarteCredito.setRow(t.gridCarteCredito.addRow(), {"1", "BANCOMAT"});
    t.gridTicket.setRow(t.gridTicket.addRow(), {"1", "BUONO", dec("5,29")});
    for (const QStringList &row : QList<QStringList>{{"14", "1", "0"}, {"14", "2", "1"}, {}, {"15", "7", "12"}, {}})
        t.gridFlag.setRow(t.gridFlag.addRow(), row);
    t.logoTesta = 3;
    t.gridRigaInt.setRow(1, {"1", "  TESTO  ", "normale centrata", "4"});
    t.gridRigaInt.setRow(2, {"2", "VIA \"ROMA\" & C.", "", ""}); // a style that could not be read
    t.gridRigaInt.setRow(4, {"4", "DOPO UNA RIGA VUOTA", "doppia", "2"});
    t.gridPS2.setRow(t.gridPS2.addRow(), {"0", "5"});
    t.gridPS2.setRow(t.gridPS2.addRow(), {"1", "0"});
    t.gridPromoTable.setRow(t.gridPromoTable.addRow(), {"9", "OFFERTA", "1", "800", "0", dec("0,5")});
    t.gridPromoTable.addRow();
    t.gridPromoTable.setRow(t.gridPromoTable.addRow(), {"3", "X", "2", "", "1", "2"});
    t.gridContantiDesc.setRow(t.gridContantiDesc.addRow(), {"1", "CONTANTI", "0"});
    t.gridContantiDesc.setRow(t.gridContantiDesc.addRow(), {"2", "FONDO", "100"});
    return t;
}

void saveAll(ProgrammingFile &f, const XmlViewTables &t)
{
    f.beginSave();
    f.SaveVersionToFile();
    f.SaveIvaToFile(t);
    f.SaveRepToFile(t);
    f.SaveCarteToFile(t);
    f.SaveTicketToFile(t);
    f.SaveFlagToFile(t);
    f.SaveLogoToFile(t);
    f.SaveIntToFile(t);
    f.SavePS2ToFile(t);
    f.SavePromoToFile(t);
    f.SaveContantiToFile(t);
}

XmlViewTables loadAll(ProgrammingFile &f)
{
    XmlViewTables t;
    t.SetupGrids();
    f.LoadIvaFromFile(t);
    f.LoadRepFromFile(t);
    f.LoadCarteFromFile(t);
    f.LoadTicketFromFile(t);
    f.LoadFlagFromFile(t);
    f.LoadIntFromFile(t);
    f.LoadLogoFromFile(t);
    f.LoadPS2FromFile(t);
    f.LoadPromoFromFile(t);
    f.LoadContantiFromFile(t);
    return t;
}

QStringList rowsOf(const ProgrammingGrid &g)
{
    QStringList rows;
    for (int r = 1; r < g.rows(); ++r)
        rows << g.row(r).join(QLatin1Char('|'));
    return rows;
}

} // namespace

class TestProgrammingFile : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

private Q_SLOTS:
    void init()
    {
        env.emplace();
        env->fake.setProperty("FirmwareVersion", "2.10");
        useLocale(kItalian);
    }
    void cleanup()
    {
        useLocale(QLocale::system());
        env.reset();
    }

    void nameRules_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("written"); // the file XmlSettings then writes, in the folder
        QTest::newRow("no extension") << "/d/prog" << "prog" << "prog.xml";
        QTest::newRow(".xml") << "/d/KX90ProgQN41100123.xml" << "KX90ProgQN41100123" << "KX90ProgQN41100123.xml";
        QTest::newRow("capitals get it too") << "/d/prog.XML" << "prog.XML" << "prog.XML.xml";
        QTest::newRow(".xml not at the end") << "/d/a.xml.bak" << "a.xml" << "a.xml.xml";
        QTest::newRow(".xml in the folder") << "/d.xml/prog" << "" << ".xml";
        QTest::newRow("offered") << "/d/" + ProgrammingFileName::offered("QN41100123") << "KX90ProgQN41100123"
                                 << "KX90ProgQN41100123.xml";
    }
    void nameRules()
    {
        QFETCH(QString, chosen);
        const ProgrammingFileName::Location at = ProgrammingFileName::forSave(chosen);
        QTEST(at.name, "name");
        QCOMPARE(at.folder, chosen.left(chosen.lastIndexOf('/')));
        // The same through the real file: the name XmlSettings lands on.
        ProgrammingFile file(at.name, env->folder.path());
        QTEST(QFileInfo(file.path()).fileName(), "written");
    }

    void bytesOfAKnownProgramming()
    {
        ProgrammingFile file("prog", env->folder.path());
        saveAll(file, knownProgramming());
        QVERIFY2(file.problem().isEmpty(), qPrintable(file.problem()));
        QCOMPARE(contentOf(env->folder.filePath("prog.xml")),
                 QByteArray("<settings CPUVersion=\"2.10\" FW_Major_Version=\"2\" FW_Minor_Version=\"10\">"
                            "<InstallIva Iva1=\"22\" Iva2=\"10,5\"/>"
                            "<InstallRep Desc1=\"PANE\" Lim1=\"0\" Iva1=\"4\" ScRias1=\"0\" GrpMerc1=\"0\" "
                            "Desc3=\"\" Lim3=\"100,5\" Iva3=\"1\" ScRias3=\"2\" GrpMerc3=\"3\"/>"
                            "<InstallCarteCredito Desc1=\"BANCOMAT\"/>"
                            "<InstallTicket Desc1=\"BUONO\" Imp1=\"5,29\"/>"
                            "<InstallFlagS14 f1=\"0\" f2=\"1\"/>"
                            "<InstallFlagS15 f7=\"12\"/>"
                            "<InstallLogo Testa=\"3\" Coda=\"0\"/>"
                            "<InstallInt R1=\"  TESTO  \" TipoR1=\"0\" R2=\"VIA &quot;ROMA&quot; &amp; C.\" TipoR2=\"\"/>"
                            "<InstallPS2 N0=\"5\" N1=\"0\"/>"
                            "<InstallPromoTable N1=\"1\" Desc1=\"OFFERTA\" Tipo1=\"1\" Barcode1=\"800\" Richiamo1=\"0\" "
                            "Valore1=\"0,5\" N3=\"3\" Desc3=\"X\" Tipo3=\"2\" Barcode3=\"\" Richiamo3=\"1\" Valore3=\"2\"/>"
                            "<InstallContantiDesc N1=\"1\" Desc1=\"CONTANTI\" ImportoPredefinito1=\"0\" "
                            "N2=\"2\" Desc2=\"FONDO\" ImportoPredefinito2=\"100\"/>"
                            "</settings>"));
    }

    void aSaveOverAnOldFileKeepsWhatItHad()
    {
        writeFile(env->folder.filePath("prog.xml"),
                  "<settings><InstallIva Iva4=\"7\"/><InstallExtra Nome=\"ROSSI\"/></settings>");
        ProgrammingFile file("prog", env->folder.path());
        saveAll(file, knownProgramming());
        const QByteArray bytes = contentOf(env->folder.filePath("prog.xml"));
        QVERIFY(bytes.startsWith("<settings CPUVersion=\"2.10\" FW_Major_Version=\"2\" FW_Minor_Version=\"10\">"
                                 "<InstallIva Iva4=\"7\" Iva1=\"22\" Iva2=\"10,5\"/><InstallExtra Nome=\"ROSSI\"/>"));
    }

    void numbersUnderEachLocale_data()
    {
        QTest::addColumn<QLocale>("writer");
        QTest::addColumn<QLocale>("reader");
        QTest::newRow("italiano") << kItalian << kItalian;
        QTest::newRow("english") << kEnglish << kEnglish;
        QTest::newRow("italiano -> english") << kItalian << kEnglish;
        QTest::newRow("english -> italiano") << kEnglish << kItalian;
    }
    void numbersUnderEachLocale()
    {
        QFETCH(QLocale, writer);
        QFETCH(QLocale, reader);
        useLocale(writer);
        ProgrammingFile file("prog", env->folder.path());
        saveAll(file, knownProgramming());
        useLocale(reader);
        const XmlViewTables loaded = loadAll(file);
        // A file always reads back where it was written; elsewhere the
        // decimal sign is the reader's and the values stay the writer's.
        QCOMPARE(Conv::ToSingle(loaded.gridIva.text(2, 1)), 10.5f);
        QCOMPARE(Conv::ToCurrency(loaded.gridRep.text(2, 2)), Currency::fromScaled(1005000));
        QCOMPARE(Conv::ToCurrency(loaded.gridTicket.text(1, 2)), Currency::fromScaled(52900));
        QCOMPARE(Conv::ToCurrency(loaded.gridPromoTable.text(1, 5)), Currency::fromScaled(5000));
    }

    void whatTheLoadersMakeOfAHandMadeFile()
    {
        QByteArray manyDepartments;
        for (int n = 998; n <= 5000; ++n)
            manyDepartments += "Desc" + QByteArray::number(n) + "=\"R\" ";
        writeFile(env->folder.filePath("odd.xml"),
                  "<settings>\n  <InstallRep Desc5=\"CINQUE\" Iva5=\"2\" " + manyDepartments + "/>\n"
                  "  <InstallTicket Desc2=\"SENZA IMPORTO\"/>\n"
                  "  <InstallPromoTable N4=\"4\" Tipo4=\"3\"/>\n"
                  "  <InstallContantiDesc N2=\"2\"/>\n"
                  "  <InstallInt R1=\"A\" TipoR1=\"-1\" R2=\"B\" R3=\"C\" TipoR3=\"3\" R5=\"E\"/>\n"
                  "  <InstallLogo Testa=\"sette\"/>\n"
                  "  <InstallFlagS15 f3=\"1\"/><InstallFlagS14 f99=\"0\"/>\n"
                  "</settings>\n");
        ProgrammingFile file("odd", env->folder.path());
        const XmlViewTables t = loadAll(file);
        QVERIFY(file.problem().isEmpty());
        // Numbered by what the file holds; missing attributes leave blanks,
        // except a ticket's amount (0) and a promotion's cells, which repeat
        // the attribute read before them.
        QCOMPARE(t.gridRep.rows(), 1 + 1 + 2); // 5, 998, 999: the file's own bound
        QCOMPARE(t.gridRep.row(1).join('|'), QStringLiteral("5|CINQUE||2||"));
        QCOMPARE(t.gridRep.text(3, 0), QStringLiteral("999"));
        QCOMPARE(rowsOf(t.gridTicket), QStringList{"2|SENZA IMPORTO|0"});
        QCOMPARE(rowsOf(t.gridPromoTable), QStringList{"4|4|3|3|3|3"});
        QCOMPARE(rowsOf(t.gridContantiDesc), QStringList{"2||"});
        // The header ends at the first missing line; an unknown style has no word.
        QCOMPARE(rowsOf(t.gridRigaInt), QStringList({"1|A||-1", "2|B||", "3|C|doppia evidenziata|3", "4|||", "|||", "|||"}));
        QCOMPARE(t.logoTesta, 0);
        QCOMPARE(rowsOf(t.gridFlag), QStringList({"14|99|0", "15|3|1"}));
        // Opening rewrites the file in its one-line form, keeping everything.
        const QByteArray after = contentOf(env->folder.filePath("odd.xml"));
        QVERIFY(!after.contains('\n'));
        QVERIFY(after.contains("Desc5000=\"R\""));
    }

    void filesThatAreNotProgrammingFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("shown"); // the grids show the file's data
        QTest::newRow("truncated") << QByteArray("<settings><InstallIva Iva1=\"22\"/><InstallRep Desc1=\"PA") << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("not XML") << QByteArray("Iva1=22\n") << false;
        QTest::newRow("another root") << QByteArray("<config>\n <InstallIva Iva1=\"22\"/>\n</config>") << true;
    }
    void filesThatAreNotProgrammingFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, shown);
        writeFile(env->folder.filePath("bad.xml"), content);
        ProgrammingFile file("bad", env->folder.path());
        const XmlViewTables t = loadAll(file);
        QCOMPARE(t.gridIva.rows(), shown ? 2 : 1);
        QCOMPARE(t.gridRep.rows(), 1);
        QVERIFY(!file.problem().isEmpty());
        // Never written over: the technician keeps the file to look at.
        QCOMPARE(contentOf(env->folder.filePath("bad.xml")), content);
    }

    void aMissingFileShowsNothing()
    {
        ProgrammingFile file("KX90ProgQN41100123", QString());
        const XmlViewTables t = loadAll(file);
        QCOMPARE(t.gridIva.rows() + t.gridRep.rows() + t.gridFlag.rows(), 3);
        QVERIFY(file.problem().isEmpty());
        QCOMPARE(contentOf(env->folder.filePath("KX90ProgQN41100123.xml")), QByteArray("<settings/>"));
    }

    void savesThatFail()
    {
        // A folder that is a file: no user, root included, can write there.
        writeFile(env->folder.filePath("blocked"), "x");
        ProgrammingFile blocked("prog", env->folder.filePath("blocked"));
        saveAll(blocked, knownProgramming());
        QVERIFY(blocked.saveFailed());
        QVERIFY(blocked.problem().startsWith("Scrittura file non riuscita"));

        // Half-way: the old file comes back, and a new one goes away.
        const QByteArray old("<settings><InstallIva Iva1=\"4\"/></settings>");
        writeFile(env->folder.filePath("prog.xml"), old);
        for (const QString &name : {QStringLiteral("prog"), QStringLiteral("nuovo")}) {
            ProgrammingFile file(name, env->folder.path());
            file.beginSave();
            file.SaveIvaToFile(knownProgramming());
            QVERIFY(file.rollBack());
        }
        QCOMPARE(contentOf(env->folder.filePath("prog.xml")), old);
        QVERIFY(!QFile::exists(env->folder.filePath("nuovo.xml")));
    }
};

QTEST_MAIN(TestProgrammingFile)
#include "tst_programmingfile.moc"
