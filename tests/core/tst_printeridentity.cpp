// Who the printer is: the serial number, the model read from it and the
// firmware version, at the edges where the padding, the busy road and the
// version split can go wrong.
#include "FakeFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"
#include "settings/RunTimeError.h"

#include <QtTest>

class TestPrinterIdentity : public QObject
{
    Q_OBJECT
    FakeFPControl fake;

    void serial(const QString &prefix, const QString &model, const QString &number)
    {
        fake.setProperty(QStringLiteral("MatricolaPrefix"), prefix);
        fake.setProperty(QStringLiteral("MatricolaModel"), model);
        fake.setProperty(QStringLiteral("MatricolaNumber"), number);
    }

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
    }

    void matricolaPadsTheNumberToSixDigits_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("matricola");
        QTest::newRow("zero") << "QN" << "0" << "QN04000000";
        QTest::newRow("three digits") << "QN" << "123" << "QN04000123";
        QTest::newRow("six digits") << "QN" << "654321" << "QN04654321";
        QTest::newRow("empty prefix") << "" << "77" << "04000077";
    }
    void matricolaPadsTheNumberToSixDigits()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, number);
        QFETCH(QString, matricola);
        serial(prefix, QStringLiteral("04"), number);
        QCOMPARE(GetMatricola(), matricola);
        QCOMPARE(fake.callsOf(QStringLiteral("ReadMatricola")).first().args, QStringList{"1"});
    }

    void sevenDigitsEndTheRun()
    {
        serial(QStringLiteral("QN"), QStringLiteral("04"), QStringLiteral("1234567"));
        try {
            GetMatricola();
            QFAIL("a seven-digit number was padded");
        } catch (const RunTimeError &e) {
            QCOMPARE(e.code(), RunTimeError::InvalidArgument);
        }
    }

    void busyComposesFromWhatThePropertiesHold()
    {
        serial(QStringLiteral("QM"), QStringLiteral("01"), QStringLiteral("42"));
        fake.busy = true;
        QCOMPARE(GetMatricola(), QStringLiteral("QM01000042"));
        QCOMPARE(GetPrinterModel(), 1);
        QCOMPARE(fake.count(QStringLiteral("ReadMatricola")), 0);
    }

    void failedReadGivesNothing()
    {
        serial(QStringLiteral("QO"), QStringLiteral("01"), QStringLiteral("42"));
        fake.setDefaultResult(QStringLiteral("ReadMatricola"), 1);
        QCOMPARE(GetMatricola(), QString());
        QCOMPARE(GetPrinterModel(), 0);
    }

    void numberThatCannotNameAFileIsNoNumber_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::newRow("slash") << "Q/";
        QTest::newRow("backslash") << "QN\\";
        QTest::newRow("colon") << "QN:";
        QTest::newRow("control character") << QStringLiteral("QN\n");
    }
    void numberThatCannotNameAFileIsNoNumber()
    {
        QFETCH(QString, prefix);
        serial(prefix, QStringLiteral("01"), QStringLiteral("5"));
        QCOMPARE(GetMatricola(), QString());
        QCOMPARE(GetPrinterModel(), 0);
    }

    void modelFromTheFirstTwoCharacters_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("index");
        QTest::newRow("KX90") << "QN" << "01" << 0;
        QTest::newRow("KX90 II") << "QM" << "01" << 1;
        QTest::newRow("KX81") << "QO" << "01" << 2;
        QTest::newRow("other") << "QX" << "01" << 0;
        QTest::newRow("lower case") << "qm" << "01" << 0;
        // The prefix alone does not decide: the first two characters do.
        QTest::newRow("empty prefix") << "" << "QO" << 2;
    }
    void modelFromTheFirstTwoCharacters()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, model);
        QFETCH(int, index);
        serial(prefix, model, QStringLiteral("1"));
        QCOMPARE(GetPrinterModel(), index);
    }

    void modelTexts()
    {
        QCOMPARE(PrinterModelText(0), QStringLiteral("KELVO KX90"));
        QCOMPARE(PrinterModelText(1), QStringLiteral("KELVO KX90 II"));
        QCOMPARE(PrinterModelText(2), QStringLiteral("KELVO KX81"));
        QCOMPARE(PrinterModelText(3), QStringLiteral("KELVO KX90"));
        QCOMPARE(PrinterModelText(-1), QStringLiteral("KELVO KX90"));
    }

    void firmwareVersion_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<int>("major");
        QTest::addColumn<int>("minor");
        QTest::newRow("major and minor") << "3.12" << 3 << 12;
        QTest::newRow("single number") << "7" << 7 << 0;
    }
    void firmwareVersion()
    {
        QFETCH(QString, version);
        QFETCH(int, major);
        QFETCH(int, minor);
        gFwMajor = -5;
        gFwMinor = -5;
        fake.setProperty(QStringLiteral("FirmwareVersion"), version);
        QCOMPARE(ReadFirmwareInfo(), version);
        QCOMPARE(int(gFwMajor), major);
        QCOMPARE(int(gFwMinor), minor);
    }

    void firmwareLeftAloneWhenNothingComes()
    {
        gFwMajor = 4;
        gFwMinor = 2;
        fake.setProperty(QStringLiteral("FirmwareVersion"), QString());
        QCOMPARE(ReadFirmwareInfo(), QString());
        fake.setProperty(QStringLiteral("FirmwareVersion"), QStringLiteral("9.9"));
        fake.queueResult(QStringLiteral("ReadPrinterInfo"), 3);
        QCOMPARE(ReadFirmwareInfo(), QString());
        QCOMPARE(int(gFwMajor), 4);
        QCOMPARE(int(gFwMinor), 2);
    }

    void firmwareAsksEvenWhenBusy()
    {
        fake.busy = true;
        fake.setProperty(QStringLiteral("FirmwareVersion"), QStringLiteral("2.5"));
        QCOMPARE(ReadFirmwareInfo(), QStringLiteral("2.5"));
        QCOMPARE(fake.callsOf(QStringLiteral("ReadPrinterInfo")).first().args, QStringList{"1"});
    }

    void firmwareThatIsNoNumberEndsTheRun()
    {
        fake.setProperty(QStringLiteral("FirmwareVersion"), QStringLiteral("V3.1"));
        try {
            ReadFirmwareInfo();
            QFAIL("a version that is no number was taken");
        } catch (const RunTimeError &e) {
            QCOMPARE(e.code(), RunTimeError::TypeMismatch);
        }
    }
};

QTEST_GUILESS_MAIN(TestPrinterIdentity)
#include "tst_printeridentity.moc"
