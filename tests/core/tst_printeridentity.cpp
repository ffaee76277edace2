// SPDX-License-Identifier: GPL-3.0-or-later
// Who the printer is: the serial number (padding, the busy road, numbers that
// cannot name a file), the model read from it, the firmware version.
#include "FakeFPControl.h"
#include "printer/Connection.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/RunTimeError.h"

#include <QtTest>

class TestPrinterIdentity : public QObject
{
    Q_OBJECT
    FakeFPControl fake;

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
    }

    // The serial number names files (programming, journal, declaration): it
    // can never leave the program's folder or hold a control character.
    void matricolaAndModel_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("matricola"); // empty: refused
        QTest::addColumn<int>("index");         // -1: not looked at
        QTest::newRow("KX90") << "QN" << "04" << "0" << "QN04000000" << 0;
        QTest::newRow("KX90 II") << "QM" << "01" << "123" << "QM01000123" << 1;
        QTest::newRow("KX81") << "QO" << "01" << "654321" << "QO01654321" << 2;
        QTest::newRow("the first two characters decide") << "" << "QO" << "77" << "QO000077" << 2;
        QTest::newRow("slash") << "Q/" << "04" << "42" << "" << 0;
        QTest::newRow("newline") << "QN" << "0\n" << "5" << "" << 0;
        QTest::newRow("parent") << ".." << "/." << "42" << "" << -1;
        QTest::newRow("backslash") << "Q\\" << "04" << "42" << "" << -1;
        QTest::newRow("dots alone stay inside the folder") << ".." << ".." << "42" << "....000042" << -1;
        QTest::newRow("NUL") << QString(QChar(0)) + "N" << "04" << "42" << "" << -1;
        QTest::newRow("tab") << "Q\t" << "04" << "42" << "" << -1;
        QTest::newRow("DEL") << "Q\x7f" << "04" << "42" << "" << -1;
        QTest::newRow("C1 control") << QString("Q") + QChar(0x81) << "04" << "42" << "" << -1;
        QTest::newRow("NEL") << QString("Q") + QChar(0x85) << "04" << "42" << "" << -1;
        QTest::newRow("colon") << "Q:" << "04" << "42" << "" << -1;
        QTest::newRow("wildcard") << "Q*" << "04" << "42" << "" << -1;
        QTest::newRow("accented letter is a letter") << QString("Q") + QChar(0xE8) << "04" << "42"
                                                      << QString("Q") + QChar(0xE8) + "04000042" << -1;
    }
    void matricolaAndModel()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, model);
        QFETCH(QString, number);
        QFETCH(int, index);
        fake.setMatricola(prefix, model, number);
        QTEST(GetMatricola(), "matricola");
        QCOMPARE(fake.callsOf("ReadMatricola").first().args, QStringList{"1"});
        if (index >= 0)
            QCOMPARE(GetPrinterModel(), index);
    }

    void matricolaEdges()
    {
        QCOMPARE(PrinterModelText(1) + "|" + PrinterModelText(2) + "|" + PrinterModelText(7),
                 QStringLiteral("KELVO KX90 II|KELVO KX81|KELVO KX90"));
        fake.setMatricola("QM", "01", "42");
        fake.busy = true; // composed from what the properties still hold
        QCOMPARE(GetMatricola(), QStringLiteral("QM01000042"));
        QCOMPARE(fake.count("ReadMatricola"), 0);
        fake.busy = false;
        fake.queueResult("ReadMatricola", 1);
        QCOMPARE(GetMatricola(), QString());
        fake.setMatricola("QM", "01", "1234567");
        QVERIFY_THROWS_EXCEPTION(RunTimeError, GetMatricola());
    }

    void firmware()
    {
        fake.busy = true; // asked all the same
        fake.setProperty("FirmwareVersion", "3.12");
        QCOMPARE(ReadFirmwareInfo(), QStringLiteral("3.12"));
        QCOMPARE(QList<int>({gFwMajor, gFwMinor}), QList<int>({3, 12}));
        fake.setProperty("FirmwareVersion", "7");
        ReadFirmwareInfo();
        QCOMPARE(QList<int>({gFwMajor, gFwMinor}), QList<int>({7, 0}));
        fake.setProperty("FirmwareVersion", ""); // nothing read: the numbers stay
        QCOMPARE(ReadFirmwareInfo(), QString());
        QCOMPARE(QList<int>({gFwMajor, gFwMinor}), QList<int>({7, 0}));
        fake.setProperty("FirmwareVersion", "V3.1");
        QVERIFY_THROWS_EXCEPTION(RunTimeError, ReadFirmwareInfo());
    }

    // The three connection operations choose the transport by UseTcp alone.
    void connectionRoads()
    {
        fake.setUseTcp(0);
        fake.comPortOpens = false;
        QCOMPARE(OpenPort(), int16_t(-1));
        fake.comPortOpens = true;
        QCOMPARE(OpenPort(), int16_t(0));
        QVERIFY(IsPortOpen());
        QCOMPARE(ClosePort(), int16_t(0));
        QVERIFY(!IsPortOpen());
        QCOMPARE(fake.count("OpenTcp") + fake.count("CloseTcp") + fake.count("IsTcpOpen"), 0);

        fake.clearCalls();
        fake.setUseTcp(1);
        fake.openTcpResult = 10061;
        QCOMPARE(OpenPort(), int16_t(-1));
        fake.openTcpResult = 0;
        QCOMPARE(OpenPort(), int16_t(0));
        QVERIFY(IsPortOpen());
        ClosePort();
        QCOMPARE(fake.callNames(), (QStringList{"OpenTcp", "OpenTcp", "IsTcpOpen", "CloseTcp"}));

        fake.clearCalls();
        fake.setUseTcp(2); // anything but 1 is the serial port
        OpenPort();
        QCOMPARE(fake.callNames().first(), QStringLiteral("OpenComPort"));
    }
};

QTEST_GUILESS_MAIN(TestPrinterIdentity)
#include "tst_printeridentity.moc"
