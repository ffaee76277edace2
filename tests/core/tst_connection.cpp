// The three connection operations choose the transport by UseTcp alone.
#include "FakeFPControl.h"
#include "printer/Connection.h"

#include <QtTest>

class TestConnection : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void serialRoad()
    {
        FakeFPControl fake;
        gFPControl = &fake;
        fake.setUseTcp(0);
        fake.comPortOpens = false;
        QCOMPARE(OpenPort(), int16_t(-1));
        fake.comPortOpens = true;
        QCOMPARE(OpenPort(), int16_t(0));
        QVERIFY(IsPortOpen());
        QCOMPARE(ClosePort(), int16_t(0));
        QVERIFY(!IsPortOpen());
        QCOMPARE(fake.count("OpenTcp") + fake.count("CloseTcp") + fake.count("IsTcpOpen"), 0);
    }

    void tcpRoadOnlyForExactlyOne()
    {
        FakeFPControl fake;
        gFPControl = &fake;
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

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
