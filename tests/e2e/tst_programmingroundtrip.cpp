// SPDX-License-Identifier: GPL-3.0-or-later
// The whole programming through the real control and the emulated printer:
// read, saved, opened again and written into a printer changed meanwhile,
// which must end up as it was; and a printer that goes away mid-restore.
#include "EmulatorTestEnv.h"
#include "printer/SharedState.h"
#include "programming/XmlViewForm.h"
#include "settings/Conversions.h"
#include "ui/FileDialog.h"

#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

// The programming part of the printer's memory. A header line is what the
// printer prints: its trailing blanks do not count; a promotion's total is
// not programming.
PrinterMemory programming(PrinterMemory m)
{
    for (HeaderLine &h : m.header)
        while (h.text.endsWith(QLatin1Char(' ')))
            h.text.chop(1);
    for (PromoRow &p : m.promos)
        p.total = Currency();
    return m;
}

void compareProgramming(const PrinterMemory &actual, const PrinterMemory &expected)
{
    const PrinterMemory a = programming(actual), e = programming(expected);
    QCOMPARE(a.iva, e.iva);
    QCOMPARE(a.departments, e.departments);
    QCOMPARE(a.cards, e.cards);
    QCOMPARE(a.tickets, e.tickets);
    QCOMPARE(a.cash, e.cash);
    QCOMPARE(a.ps2, e.ps2);
    QCOMPARE(a.promos, e.promos);
    QCOMPARE(a.flags, e.flags);
    QCOMPARE(a.params, e.params);
    QCOMPARE(a.header, e.header);
}

QStringList filledRows(const ProgrammingGrid &g)
{
    QStringList rows;
    for (int r = 1; r < g.rows(); ++r)
        if (!g.row(r).join(QString()).trimmed().isEmpty())
            rows << g.row(r).join(QLatin1Char('|'));
    return rows;
}

} // namespace

class TestProgrammingRoundTrip : public QObject
{
    Q_OBJECT
    std::optional<EmulatorTestEnv> env;

    void run(const char *name, const QList<QByteArray> &args)
    {
        const Reply reply = env->run(name, args);
        QVERIFY2(reply.result == 0, qPrintable(QString::fromLatin1(name) + " refused"));
    }

    // A programming that differs from a new printer's in every table.
    void programPrinter()
    {
        run("WriteIva", {"2", "10.5"});
        run("WriteReparto", {"9", "  GELATI  ", "0", "0", "0", "0", "3", "55000", "2", "4", ""});
        run("WriteCarta", {"7", "DINERS"});
        run("WriteTicket", {"3", "EDENRED", "80000"});
        run("WriteContante", {"4", "ASSEGNI"});
        run("WriteContantePredefinito", {"4", "250000"});
        run("WritePS2", {"65", "17"});
        run("WritePromo", {"5", "2", "7", "123", "PROMO 5", "12345", "1", "1", ""});
        run("WriteFlag", {"5", "1"});
        run("WriteParam", {"20", "300"});
        run("WriteHeaderLine", {"5", QByteArray(16, ' ') + "CENTRATA" + QByteArray(16, ' ')});
        run("WriteHeaderStyle", {"5", "1"});
    }

    // Another programming over it: what the restore has to undo.
    void changePrinter()
    {
        run("WriteIva", {"1", "4"});
        run("WriteReparto", {"1", "ALTRO", "10000", "20000", "30000", "0", "2", "0", "1", "1", ""});
        run("WriteReparto", {"40", "ULTIMO", "0", "0", "0", "0", "1", "0", "0", "0", ""});
        run("WriteCarta", {"7", "ALTRA"});
        run("WriteTicket", {"1", "BUONO", "1"});
        run("WriteContantePredefinito", {"4", "1"});
        run("WritePS2", {"65", "0"});
        run("WritePS2", {"0", "9"});
        run("WritePromo", {"5", "1", "1", "9", "X", "1", "1", "1", ""});
        run("WriteFlag", {"5", "0"});
        run("WriteFlag", {"12", "0"});
        run("WriteParam", {"20", "1"});
        run("WriteHeaderLine", {"2", "VIA NUOVA"});
        run("WriteHeaderStyle", {"1", "1"});
    }

private Q_SLOTS:
    void init()
    {
        env.emplace();
        QVERIFY(env->startOnTcp());
        gMaxNReparti = 40;
        Conv::setLocaleForTests(QLocale(QLocale::Italian, QLocale::Italy));
        FileDialog::startRecording();
    }
    void cleanup()
    {
        FileDialog::stopRecording();
        Conv::setLocaleForTests(QLocale::system());
        env.reset();
    }

    void readSaveOpenRestore()
    {
        programPrinter();
        const PrinterMemory before = env->emu->model().memory();

        XmlViewForm::FormMode = 1;
        XmlViewForm read;
        QVERIFY(MsgBox::shownTexts().isEmpty());
        QCOMPARE(read.data.gridRep.text(9, 1), QStringLiteral("  GELATI  "));
        QCOMPARE(read.data.gridRigaInt.text(5, 3), QStringLiteral("4"));
        const QString path = env->folder.filePath("copia.xml");
        FileDialog::queueAnswer(path);
        read.btnPrgSave->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Scrittura file terminata!"});

        MsgBox::clearShown();
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = path;
        XmlViewForm file;
        QVERIFY(MsgBox::shownTexts().isEmpty());
        // The file shows what was read: the lines and their style words (a
        // centred line's 4 comes back as 0, and is centred by its blanks).
        for (int n = 1; n <= 6; ++n)
            QCOMPARE(file.data.gridRigaInt.row(n).mid(1, 2), read.data.gridRigaInt.row(n).mid(1, 2));
        for (auto grid : {&XmlViewTables::gridIva, &XmlViewTables::gridRep, &XmlViewTables::gridCarteCredito,
                          &XmlViewTables::gridTicket, &XmlViewTables::gridFlag, &XmlViewTables::gridPS2,
                          &XmlViewTables::gridPromoTable, &XmlViewTables::gridContantiDesc})
            QCOMPARE(filledRows(file.data.*grid), filledRows(read.data.*grid));
        QCOMPARE(file.data.logoTesta, read.data.logoTesta);

        changePrinter();
        QVERIFY(env->emu->model().memory().departments != before.departments);
        file.btnPrgSave->click();
        QCOMPARE(MsgBox::shownTexts(), QStringList{"Programmazione stampante terminata!"});
        compareProgramming(env->emu->model().memory(), before);
        // Lines 98 and 99 closed the header: the printer printed it.
        QVERIFY(env->roll().join('\n').contains("PROGRAMMAZIONE INTESTAZIONE"));
    }

    void thePrinterGoesAwayDuringARestore()
    {
        const QString path = env->folder.filePath("p.xml");
        {
            XmlViewForm::FormMode = 1;
            XmlViewForm read;
            FileDialog::queueAnswer(path);
            read.btnPrgSave->click();
        }
        MsgBox::clearShown();
        XmlViewForm::FormMode = 2;
        XmlViewForm::XmlFile = path;
        XmlViewForm file;
        int handled = 0;
        connect(&*env->emu, &EmulatorServer::requestHandled, this, [&](const QString &, const QByteArray &name) {
            if (name == "WriteReparto" && ++handled == 10)
                env->emu->setPower(false);
        });
        file.btnPrgSave->click();
        // The rows swallow their failures; the two logo parameters report
        // theirs, and the end is announced all the same.
        QCOMPARE(MsgBox::shownTexts(), QStringList({"Registratore non collegato.\r\n", "Registratore non collegato.\r\n",
                                                    "Programmazione stampante terminata!"}));
        QCOMPARE(handled, 10);
    }
};

QTEST_MAIN(TestProgrammingRoundTrip)
#include "tst_programmingroundtrip.moc"
