// SPDX-License-Identifier: GPL-3.0-or-later
// Result reporting: the exact texts the technician sees for each result,
// and the calls into the control that reporting makes.
#include "FakeFPControl.h"
#include "printer/ResultTexts.h"
#include "ui/MsgBox.h"
#include "ui/ReportResult.h"

#include <QtTest>

class TestReportResult : public QObject
{
    Q_OBJECT
    FakeFPControl fake;

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
        MsgBox::startRecording();
    }
    void cleanup() { MsgBox::stopRecording(); }

    void refusalCarriesTheDetail_data()
    {
        QTest::addColumn<int>("errorCode");
        QTest::addColumn<QString>("text");
        QTest::newRow("paper") << 1 << "Errore del registratore di cassa: FINE CARTA GIORNALE DI FONDO.\r\n";
        QTest::newRow("date") << 9 << "Errore del registratore di cassa: DATA INFERIORE.\r\n";
        QTest::newRow("apostrophe") << 25 << "Errore del registratore di cassa: MANCA L'OPERATORE.\r\n";
        QTest::newRow("last") << 31 << "Errore del registratore di cassa: DATI INESISTENTI PC.\r\n";
        QTest::newRow("zero") << 0 << "Errore del registratore di cassa:\r\n";
        QTest::newRow("beyond") << 32 << "Errore del registratore di cassa:\r\n";
        QTest::newRow("negative") << -4 << "Errore del registratore di cassa:\r\n";
    }
    void refusalCarriesTheDetail()
    {
        QFETCH(int, errorCode);
        QFETCH(QString, text);
        fake.setProperty(QStringLiteral("ErrorCode"), QString::number(errorCode));
        int16_t result = -1;
        ReportResult(result);
        QCOMPARE(MsgBox::shownTexts(), QStringList{text});
        QVERIFY(MsgBox::shown().first().title == "Fiscorda" && MsgBox::shown().first().buttons == QMessageBox::Ok);
        QCOMPARE(result, int16_t(-1));
    }

    void controlResults()
    {
        fake.setProperty(QStringLiteral("InfoCode"), QStringLiteral("1175"));
        ReportResult(0); // success shows nothing
        for (int16_t r = 1; r <= 9; ++r)
            ReportResult(r);
        ReportResult(10); // unknown results: an empty line
        ReportResult(-2);
        int16_t r = 2;
        ReportResult(r, {}, QStringLiteral("riga 3")); // extra text after the break
        QCOMPARE(MsgBox::shownTexts(), QStringList({
            "Registratore non collegato.\r\n",
            "Porta COM non aperta.\r\n",
            "Scaduto il timeout per avere la risposta completa dalla stampante (ricevuti sia ACK che STX...ETX mai arrivato).\r\n",
            "Ricevuta risposta con checksum errato.\r\n",
            "Non è stata impostata correttamente la proprietà EuroSettings.\r\n",
            "Il file grafico per la programmazione grafica non esiste.\r\n",
            "La stampante entro il timeout non ha inviato l'ACK di conferma dell'avvenuta ricezione della richiesta.\r\n",
            "La stampante ha risposto ACK, ma entro il timeout non ha cominciato ad inviare la risposta.\r\n",
            "E' stato richiesto alla stampante l'esecuzione di un metodo prima che la stampante termini di soddisfare un'altra richiesta.\r\n",
            "\r\n", "\r\n", "Porta COM non aperta.\r\nriga 3"}));
        QCOMPARE(fake.count(QStringLiteral("ErrorCode")), 0); // only a refusal looks at the detail
    }

    void stateTables()
    {
        using namespace ResultTexts;
        QCOMPARE(printerStatusDigit(0, 0).text, QStringLiteral("Carta presente"));
        // The entries past each table's end are the monitor's tests.
        QCOMPARE(printerStatusDigit(0, 3).colour, StateColour::Red);
        QCOMPARE(printerStatusDigit(1, 2).text, QStringLiteral("da formattare"));
        QCOMPARE(printerStatusDigit(1, 5).text, QStringLiteral("ESAURITO"));
        QVERIFY(printerStatusDigit(2, 1).text == "Cassetto chiuso" && printerStatusDigit(2, 1).colour == StateColour::Black);
        QVERIFY(printerStatusDigit(3, 4).text == "ERRORE ESC/POS" && printerStatusDigit(3, 4).colour == StateColour::Black);
        QCOMPARE(dgfeState(2)->text, QStringLiteral("Da formattare"));
        QCOMPARE(dgfeState(3)->text, QStringLiteral("Di un'altra stampante"));
        QCOMPARE(dgfeState(0)->colour, StateColour::Black);
        QVERIFY(!dgfeState(5).has_value() && !dgfeState(-1).has_value());
    }
};

QTEST_MAIN(TestReportResult)
#include "tst_reportresult.moc"
