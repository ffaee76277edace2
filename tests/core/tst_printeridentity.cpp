// Who the printer is: the serial number's padding, the busy road, numbers
// that cannot name a file, the model read from it, the firmware version.
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
        fake.setProperty("MatricolaPrefix", prefix);
        fake.setProperty("MatricolaModel", model);
        fake.setProperty("MatricolaNumber", number);
    }

private Q_SLOTS:
    void init()
    {
        fake = FakeFPControl();
        gFPControl = &fake;
    }

    void matricolaAndModel()
    {
        const struct { const char *prefix, *model, *number, *matricola; int index; } cases[] = {
            {"QN", "04", "0", "QN04000000", 0},
            {"QM", "01", "123", "QM01000123", 1},
            {"QO", "01", "654321", "QO01654321", 2},
            {"", "QO", "77", "QO000077", 2}, // the first two characters decide
            {"Q/", "01", "5", "", 0},        // cannot stand in a file name
            {"QN", "0\n", "5", "", 0},
        };
        for (const auto &c : cases) {
            serial(c.prefix, c.model, c.number);
            QCOMPARE(GetMatricola(), QString(c.matricola));
            QCOMPARE(GetPrinterModel(), c.index);
        }
        QCOMPARE(fake.callsOf("ReadMatricola").first().args, QStringList{"1"});
        QCOMPARE(PrinterModelText(1) + "|" + PrinterModelText(2) + "|" + PrinterModelText(7),
                 QStringLiteral("KELVO KX90 II|KELVO KX81|KELVO KX90"));
    }

    void matricolaEdges()
    {
        serial("QM", "01", "42");
        fake.busy = true; // composed from what the properties still hold
        QCOMPARE(GetMatricola(), QStringLiteral("QM01000042"));
        QCOMPARE(fake.count("ReadMatricola"), 0);
        fake.busy = false;
        fake.queueResult("ReadMatricola", 1);
        QCOMPARE(GetMatricola(), QString());
        serial("QM", "01", "1234567");
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
};

QTEST_GUILESS_MAIN(TestPrinterIdentity)
#include "tst_printeridentity.moc"
