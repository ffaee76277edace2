// SPDX-License-Identifier: GPL-3.0-or-later
// The declaration for the tax office: the text file to the byte in both
// modes, the printed page read back from a PDF, the list of printers, the
// copies, a printer or a file that fails, and the file output that stays on
// for the rest of the showing; the booklet's page printed through the choice
// of a printer.
#include "FormTestEnv.h"
#include "TestFiles.h"
#include "paperwork/DeclarationPage.h"
#include "paperwork/InstallLibrettoFiscaleForm.h"
#include "paperwork/PrintFoglioForm.h"
#include "paperwork/SystemPrinters.h"
#include "settings/Cp1252.h"
#include "printer/SharedState.h"
#include "settings/RunTimeError.h"
#include "ui/FileDialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QtTest>

namespace {

// The page of a commissioning for the printer and the customer of init().
const char *kInstallPage = R"( 
ALL'UFFICIO DELLE ENTRATE DI: ________________________________________
 
Oggetto: Dichiarazione relativa ai Misuratori Fiscali
 
 Il sottoscritto: NICCOLÒ ROSSI
 
  Codice fiscale: RSSNCC80A01F205X
 
nella qualità di: TITOLARE
 
     della ditta: BAR SPORT
 
                  DI ROSSI & C.
 
  sede legale in: VIA ROMA 1
 
                  20100 MILANO
 
     Partita IVA: IT01234567890
                            Dichiara
     che in data: 05 / 03 / 2026
 
presso l'esercizio ubicato in: PIAZZA DUOMO 2
 
Sono stati MESSI IN SERVIZIO i seguenti misuratori fiscali:
 
|    MODELLO    |    MATRICOLA   | N°      | VERIFICA  | SCAD. VER. |
|               |    FISCALE     | AZZERA. | PERIODICA | PERIODICA  |
|---------------|----------------|---------|-----------|------------|
|     KX90      |   QN41000123   |    7    |           |            |
|---------------|----------------|---------|-----------|------------|
|               |                |         |           |            |
|---------------|----------------|---------|-----------|------------|
 
Da compilare a cura del tecnico SOLO SE effettuata la VERIFICAZIONE PERIODICA
con applicazione del bollino verde contestualmente alla messa in servizio
 
Verificazione periodica effettuata dal sig.:
 
   ____________________________________________________________________________
 
              Codice fiscale: ________________________________
 
   Marchio identificativo n°: KI ________
 
   Tessera riconoscimento n°: ________
 
 Ragione sociale laboratorio: _________________________________________________
 
                              _________________________________________________
 
                   Indirizzo: _________________________________________________
 
                              _________________________________________________
 
                 Partita IVA: ______________________
 
Data: ___ / ___ / ______
  (presentazione Ufficio delle Entrate)
 
La Ditta                           Il Tecnico
 
Niccolò Rossi
 
____________________________       ______________________________)";

QByteArray asFile(const QString &page)
{
    QByteArray bytes;
    for (const QString &line : page.split(QLatin1Char('\n')))
        bytes += Cp1252::encode(line) + "\r\n";
    return bytes;
}

QString decommissioningPage()
{
    QString page = QString::fromUtf8(kInstallPage);
    page.replace("Sono stati MESSI IN SERVIZIO i", "Sono stati  [] DEFISCALIZZATI  [] CEDUTI  i");
    page.replace("effettuata la VERIFICAZIONE PERIODICA\ncon applicazione del bollino verde contestualmente alla messa in servizio",
                 "effettuata una DEFISCALIZZAZIONE");
    page.replace("Verificazione periodica effettuata", "      Defiscalizzazione effettuata");
    return page;
}

QString pdfText(const QString &pdf, const QStringList &options = {"-layout"})
{
    QProcess p;
    p.start("pdftotext", options + QStringList{pdf, "-"});
    if (!p.waitForFinished(30000) || p.exitCode() != 0)
        return "<pdftotext failed: " + QString::fromLocal8Bit(p.readAllStandardError()) + ">";
    return QString::fromUtf8(p.readAllStandardOutput());
}


}

class TestDeclaration : public QObject
{
    Q_OBJECT
    std::optional<FormTestEnv> env;

    QString path(const QString &name) const { return env->folder.filePath(name); }

private Q_SLOTS:
    void init()
    {
        env.emplace(FormTestEnv::Options{.fileDialogs = true,
                                         .printers = QList<SystemPrinters::Printer>{{"Laser ufficio", true, false},
                                                                                    {"Letter USA", false, false}}});
        const QStringList printer = {"MatricolaPrefix=QN", "MatricolaModel=41", "MatricolaNumber=123", "Azzeramenti=7",
                                     "DateDay=5", "DateMonth=3", "DateYear=26"};
        for (const QString &p : printer)
            env->fake.setProperty(p.section('=', 0, 0), p.section('=', 1));
        gNome = QStringLiteral("Niccolò Rossi");
        gCdf = "rssncc80a01f205x";
        gQual = "titolare";
        gRagioneSociale = QStringList{" bar sport ", "di rossi & c."};
        gSede = QStringList{"via roma 1", "20100 milano"};
        gPartitaIva = " it01234567890 ";
        gIndirizzo = QStringList{"piazza duomo 2"};
        PrintFoglioForm::PrintMode = 1;
    }
    void cleanup() { env.reset(); }

    void textFileToTheByte_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("page");
        QTest::newRow("commissioning") << 1 << "Modulo_Installazione_QN41000123.txt" << QString::fromUtf8(kInstallPage);
        QTest::newRow("decommissioning") << 2 << "Modulo_Disinstallazione_QN41000123.txt" << decommissioningPage();
    }
    void textFileToTheByte()
    {
        QFETCH(int, mode);
        QFETCH(QString, page);
        PrintFoglioForm::PrintMode = int16_t(mode);
        PrintFoglioForm form;
        TestFiles::writeFile(path("out.txt"), "an older declaration");
        FileDialog::queueAnswer(path("out.txt"));
        form.btnPrintFile->click();
        QTEST(FileDialog::asked().value(0).folder, "name"); // the proposed name
        QVERIFY(!FileDialog::asked().value(0).askBeforeReplacing);
        const QByteArray bytes = TestFiles::contentOf(path("out.txt"));
        QCOMPARE(bytes, asFile(page));
        QVERIFY(bytes.contains("NICCOL\xD2")); // Windows-1252, as the other files
        QVERIFY(MsgBox::shownTexts().isEmpty());
    }

    void resetsColumn()
    {
        // Centred in its column of nine; four digits leave the row out.
        QCOMPARE(DeclarationPage::dataRow("QN41000123", 42).mid(33), QStringLiteral("|   42    |           |            |"));
        QCOMPARE(DeclarationPage::dataRow("QN41000123", 913).mid(33, 11), QStringLiteral("|   913   |"));
        QVERIFY(DeclarationPage::dataRow("QN41000123", 1000).isEmpty());
        DeclarationData data;
        data.azzeramenti = 1000;
        const QStringList lines = DeclarationPage::textLines(DeclarationPage::compose(data));
        const qsizetype rule = lines.indexOf("|---------------|----------------|---------|-----------|------------|");
        QCOMPARE(lines.value(rule + 1), lines.value(rule)); // rule to rule
    }

    void emptyCustomerData()
    {
        // What the commissioning leaves when nothing was given.
        gNome = gCdf = gQual = BlankCustomerLine();
        gSede = QStringList{BlankCustomerLine(), BlankCustomerLine()};
        DeclarationData data = DeclarationData::read(1);
        const QStringList lines = DeclarationPage::textLines(DeclarationPage::compose(data));
        QVERIFY(lines.contains(" Il sottoscritto: " + BlankCustomerLine()));
        QVERIFY(lines.contains("                  " + BlankCustomerLine())); // the second line of the office
        const qsizetype signers = lines.indexOf("La Ditta                           Il Tecnico");
        QCOMPARE(lines.mid(signers + 1), QStringList({" ", "____________________________       ______________________________"}));
    }

    void printToFileStaysOnForTheShowing()
    {
        PrintFoglioForm form;
        FileDialog::queueAnswer(path("a.txt"));
        form.btnPrintFile->click();
        QVERIFY(form.PrintToFile);
        QFile::remove(path("a.txt"));
        form.btnPrint->click(); // paper asked, the file is written again
        QVERIFY(QFile::exists(path("a.txt")));
        QVERIFY(SystemPrinters::jobs().isEmpty());
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QCOMPARE(FileDialog::asked().size(), 1);

        PrintFoglioForm next; // a new showing starts on paper
        QVERIFY(!next.PrintToFile);
    }

    void cancelledDialogKeepsTheProposedName()
    {
        env->fake.queueResult("ReadMatricola", -1); // serial number not read
        PrintFoglioForm::PrintMode = 2;
        PrintFoglioForm form;
        FileDialog::queueAnswer(std::nullopt);
        form.btnPrintFile->click();
        QCOMPARE(form.OutputFileName, path("Modulo_Disinstallazione_.txt"));
        QVERIFY(TestFiles::contentOf(form.OutputFileName).contains("|     KX90      |   QN41000123   |")); // read anew
    }

    void unwritableFileEndsTheRunAndLeavesNothing()
    {
        PrintFoglioForm form;
        FileDialog::queueAnswer(path("no/such/folder/x.txt"));
        QVERIFY_THROWS_EXCEPTION(RunTimeError, form.btnPrintFile_Click());
        QVERIFY(!QFileInfo::exists(path("no")));
    }

    void loadByMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("look"); // btnOK, copies, whether they can be printed
        QTest::newRow("commissioning") << 1 << "Messa in servizio terminata 1 1";
        QTest::newRow("decommissioning") << 2 << "FINE 2 1";
        QTest::newRow("choice of a printer") << 3 << "APPLICA  0";
    }
    void loadByMode()
    {
        QFETCH(int, mode);
        PrintFoglioForm::PrintMode = int16_t(mode);
        PrintFoglioForm form;
        form.show();
        QTEST(QStringLiteral("%1 %2 %3").arg(form.btnOK->text(), form.txtNCopie->text()).arg(form.btnPrintFile->isVisible()), "look");
        // The A4 printers of the system, then the PDF file; the first is current.
        QCOMPARE(form.comboPrn->count(), 2);
        QCOMPARE(SystemPrinters::current() + "," + form.comboPrn->itemText(1), QStringLiteral("Laser ufficio,PDF"));
        form.comboPrn->setCurrentIndex(1);
        QCOMPARE(SystemPrinters::current(), QStringLiteral("PDF"));
        form.btnOK->click();
        QVERIFY(form.PrinterChosen);

        SystemPrinters::useForTests({{"PDF", true, false}}); // no printer but a PDF queue: the PDF alone
        PrintFoglioForm alone;
        QCOMPARE(alone.comboPrn->count() * alone.btnPrint->isEnabled(), 1);
        SystemPrinters::stopUsingTestPrinters(); // the system's own list (CUPS may not even run)
        QCOMPARE(SystemPrinters::a4Devices().last(), QStringLiteral("PDF"));
    }

    void copiesToThePrinter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("copies");
        QTest::newRow("number") << "3" << 3;
        QTest::newRow("no number: the printer's own") << "due" << 0;
        QTest::newRow("too large for a number: the printer's own") << "99999999999" << 0;
    }
    void copiesToThePrinter()
    {
        QFETCH(QString, text);
        PrintFoglioForm form;
        form.txtNCopie->setText(text);
        form.btnPrint->click();
        QCOMPARE(SystemPrinters::jobs().size(), 1);
        QCOMPARE(SystemPrinters::jobs().first().device, QStringLiteral("Laser ufficio"));
        QTEST(SystemPrinters::jobs().first().copies, "copies");
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Stampa in corso... verificare che non ci siano problemi."});
        QVERIFY(!form.PrintToFile);
    }

    void printerThatFailsIsTold()
    {
        SystemPrinters::useForTests({{"Rotta", true, true}});
        PrintFoglioForm form;
        gRagioneSociale = QStringList(40, "riga"); // more than a page: the printer gives up at the second
        form.btnPrint->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"La stampa su Rotta si è interrotta."});
        QVERIFY(form.btnOK->isEnabled());
    }

    void pageOnPaperReadBack()
    {
        // A name far wider than the page goes on below, not off the edge.
        gNome = QStringLiteral("Niccolò Rossi ") + QString(90, 'x') + "FINENOME";
        PrintFoglioForm form;
        form.comboPrn->setCurrentText("PDF");
        form.txtNCopie->setText("2");
        FileDialog::queueAnswer(path("modulo.pdf"));
        form.btnPrint->click();
        QCOMPARE(FileDialog::asked().value(0).folder, QStringLiteral("Modulo_Installazione_QN41000123.pdf"));
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Stampa in corso... verificare che non ci siano problemi."});
        const QString text = pdfText(path("modulo.pdf"));
        QCOMPARE(text.count('\f'), 2); // one page a copy
        for (const char *piece : {"ALL'UFFICIO DELLE ENTRATE DI: ____", " Il sottoscritto: NICCOLÒ ROSSI XXXX",
                                  "FINENOME", "nella qualità di: TITOLARE", "DI ROSSI & C.",
                                  "Dichiara", "che in data: 05 / 03 / 2026",
                                  "|     KX90      |   QN41000123   |    7    |           |            |",
                                  "Partita IVA: ______________________", "(presentazione Ufficio delle Entrate)"})
            QVERIFY2(text.contains(QString::fromUtf8(piece)), piece);
    }

    void pdfThatCannotBeWritten()
    {
        const QString target = "cartella.pdf"; // a folder's name: the file cannot take its place
        QDir(env->folder.path()).mkdir("cartella.pdf");
        const QStringList before = QDir(env->folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        PrintFoglioForm form;
        form.comboPrn->setCurrentText("PDF");
        FileDialog::queueAnswer(path(target));
        form.btnPrint->click();
        QCOMPARE(MsgBox::shown().size(), 1);
        QVERIFY2(MsgBox::shownTexts().value(0).startsWith("Impossibile scrivere il file " + path(target)),
                 qPrintable(MsgBox::shownTexts().value(0)));
        QCOMPARE(MsgBox::shown().value(0).icon, QMessageBox::Warning);
        QCOMPARE(QDir(env->folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before); // no leftovers
        QVERIFY(QFileInfo(path("cartella.pdf")).isDir());
    }

    void bookletReminderOnTheDeviceChosen()
    {
        InstallLibrettoFiscaleForm booklet;
        booklet.show(); // printed as it stands on the screen
        whenModal("PrintFoglioForm", [](QWidget *w) {
            auto *choice = static_cast<PrintFoglioForm *>(w);
            if (PrintFoglioForm::PrintMode == 3)
                choice->comboPrn->setCurrentText("PDF");
            choice->btnOK->click(); // "APPLICA"
        });
        FileDialog::queueAnswer(path("promemoria.pdf"));
        booklet.btnPrint->click();
        const QString text = pdfText(path("promemoria.pdf"), {}).normalized(QString::NormalizationForm_KC).simplified();
        for (const char *piece : {"Istruzioni per la compilazione del libretto fiscale", "Ditta utente: BAR SPORT DI ROSSI & C.",
                                  "N. azzeramenti: 7", "Data di installazione: 05/03/26", "8282 + C + 01 + INVIO (Z01)"})
            QVERIFY2(text.contains(QLatin1String(piece)), qPrintable(QString(piece) + " not in: " + text));

        whenModal("PrintFoglioForm", [](QWidget *w) { w->close(); });
        booklet.btnPrint->click(); // closed without APPLICA: nothing printed
        QCOMPARE(FileDialog::asked().size(), 1);
        QVERIFY(SystemPrinters::jobs().isEmpty());
    }
};

QTEST_MAIN(TestDeclaration)
#include "tst_declaration.moc"
