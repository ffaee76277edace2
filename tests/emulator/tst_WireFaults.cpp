// SPDX-License-Identifier: GPL-3.0-or-later
// The emulator on the wire, over loopback TCP, seen byte by byte: ACK and
// NAK, the answer's SEQ, each fault switch, the traffic log. (Power off and
// on over TCP: the control's end-to-end test.)

#include "EmulatorTestKit.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

using namespace Kit;
using Kind = Wire::FrameDecoder::Kind;
using Fault = FaultSwitches::Wire;

class TestWireFaults : public QObject
{
    Q_OBJECT

    std::unique_ptr<EmulatorServer> emu;
    QTemporaryDir dir;

    QString trafficPath() const { return dir.filePath(QStringLiteral("traffic.log")); }

    static QList<Kind> kinds(const QList<Wire::FrameDecoder::Event> &events)
    {
        QList<Kind> out;
        for (const auto &e : events)
            out << e.kind;
        return out;
    }

private Q_SLOTS:
    void init()
    {
        QFile::remove(trafficPath());
        EmulatorConfig config;
        config.trafficPath = trafficPath();
        emu = std::make_unique<EmulatorServer>(config);
        QVERIFY(emu->start());
        QVERIFY(emu->listenTcp(QHostAddress::LocalHost, 0));
        QVERIFY(emu->tcpPort() != 0);
    }
    void cleanup() { emu.reset(); }

    void requestGetsAckThenAnswerWithItsSeq()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        c.send('7', {"ReadReparto", "2"});
        const auto events = c.collect(2000, 2);
        QCOMPARE(kinds(events), (QList<Kind>{Kind::Ack, Kind::Frame}));
        QCOMPARE(events[1].seq, '7');
        QCOMPARE(events[1].fields.value(0), QByteArray("0"));
        QCOMPARE(field(events[1], "RepartoDescrizione"), QStringLiteral("FRUTTA"));
        QCOMPARE(c.raw.left(1), QByteArray(1, Wire::ACK)); // the ACK comes first, alone

        c.send('8', {"ReadReparto", "99"});
        const auto refused = c.collect(2000, 2);
        QCOMPARE(refused.value(1).fields.value(0), QByteArray("-1"));
        QCOMPARE(field(refused.value(1), "ErrorCode"), QStringLiteral("16"));
    }

    void malformedRequestsGetNakAndAreNotExecuted()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        QByteArray frame = Wire::encodeFrame('0', {"WriteCarta", "3", "ROVINATA"});
        frame[frame.size() - 1] = frame.at(frame.size() - 1) == '0' ? '1' : '0';
        c.sendRaw(QByteArray("noise") + frame);
        QCOMPARE(kinds(c.collect(2000, 1)), QList<Kind>{Kind::Nak});
        c.sendRaw(QByteArray(1, Wire::STX) + "0Read" + Wire::encodeFrame('0', {"ReadIva", "1"})); // a frame cut by a new STX
        QCOMPARE(kinds(c.collect(2000, 3)), (QList<Kind>{Kind::Nak, Kind::Ack, Kind::Frame}));
        QCOMPARE(emu->model().memory().cards[2], QStringLiteral("MASTERCARD"));
    }

    void everyControlByteSurvivesTheRawChannel()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        QByteArray image;
        for (int b = 0; b < 256; ++b)
            image.append(char(b));
        const QByteArray opening("AGGIORNAMENTO LOGO GRAFICO....\n\r");
        const QByteArray closing("AGGIORNAMENTO LOGO GRAFICO TERMINATO\n\r");
        const QList<QList<QByteArray>> requests{
            {"OpenRawChannel", "1", "FPEXTENDEDGRAPHIC"},
            {"BeginRawTransfer", "1", num(opening.size() + image.size() + closing.size()), "0", ""},
            {"SendRawData", opening}, {"SendRawData", image}, {"SendRawData", closing}, {"CloseRawChannel", "1"}};
        char seq = '0';
        for (const auto &r : requests) {
            c.send(seq, r);
            const auto events = c.collect(2000, 2);
            QCOMPARE(events.value(1).fields.value(0), QByteArray("0"));
            seq = Wire::nextSeq(seq);
        }
        QCOMPARE(emu->model().memory().logos.value(0).data, image);
    }

    void faultSwitches_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<QList<Kind>>("expected");
        QTest::newRow("nak") << int(Fault::Nak) << QList<Kind>{Kind::Nak};
        QTest::newRow("noack") << int(Fault::NoAck) << QList<Kind>{};
        QTest::newRow("ackonly") << int(Fault::AckOnly) << QList<Kind>{Kind::Ack};
        QTest::newRow("badsum") << int(Fault::BadChecksum) << QList<Kind>{Kind::Ack, Kind::BadFrame};
        QTest::newRow("stale") << int(Fault::Stale) << QList<Kind>{Kind::Ack, Kind::Frame, Kind::Frame};
        QTest::newRow("cut") << int(Fault::CutAnswer) << QList<Kind>{Kind::Ack};
    }

    void faultSwitches()
    {
        QFETCH(int, fault);
        QFETCH(QList<Kind>, expected);
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        c.send('4', {"ReadIva", "1"});
        QCOMPARE(c.collect(2000, 2).size(), 2);
        emu->faults().set(Fault(fault), 1);
        c.send('5', {"WriteCarta", "1", "CAMBIATA"});
        const auto events = c.collect(400);
        QCOMPARE(kinds(events), expected);
        const bool executed = Fault(fault) != Fault::Nak && Fault(fault) != Fault::NoAck && Fault(fault) != Fault::AckOnly;
        QCOMPARE(emu->model().memory().cards[0] == QLatin1String("CAMBIATA"), executed);
        if (Fault(fault) == Fault::Stale) {
            QCOMPARE(events[1].seq, '4'); // the answer to the request before
            QCOMPARE(events[2].seq, '5');
        }
        if (Fault(fault) == Fault::BadChecksum)
            QCOMPARE(events[1].seq, '5');
        if (Fault(fault) == Fault::CutAnswer) {
            QVERIFY(c.decoder.inFrame()); // the answer began and never ends
            QVERIFY(c.raw.contains(Wire::STX));
        }
        // The fault was for one request: the next is answered normally.
        c.decoder.reset();
        c.send('6', {"ReadIva", "2"});
        const auto after = c.collect(2000, 2);
        QCOMPARE(kinds(after), (QList<Kind>{Kind::Ack, Kind::Frame}));
        QCOMPARE(after[1].seq, '6');
    }

    void faultsCountDownAndStayOn()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        emu->faults().set(Fault::Nak, 2);
        const QByteArray frame = Wire::encodeFrame('0', {"ReadIva", "1"});
        for (int i = 0; i < 2; ++i) {
            c.sendRaw(frame);
            QCOMPARE(kinds(c.collect(2000, 1)), QList<Kind>{Kind::Nak});
        }
        c.sendRaw(frame); // the same frame a third time, as the control sends it
        QCOMPARE(kinds(c.collect(2000, 2)), (QList<Kind>{Kind::Ack, Kind::Frame}));
        emu->faults().set(Fault::Nak, FaultSwitches::Always);
        for (int i = 0; i < 4; ++i) {
            c.sendRaw(frame);
            QCOMPARE(kinds(c.collect(2000, 1)), QList<Kind>{Kind::Nak});
        }
        emu->faults().clear();
        c.sendRaw(frame);
        QCOMPARE(kinds(c.collect(2000, 2)), (QList<Kind>{Kind::Ack, Kind::Frame}));
    }

    void slowAnswersComeLate()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        // The delay is long enough that a busy machine cannot make the ACK
        // look late.
        emu->faults().slowMs = 2000;
        QElapsedTimer t;
        t.start();
        c.send('0', {"ReadDateTime"});
        QCOMPARE(kinds(c.collect(4000, 1)), QList<Kind>{Kind::Ack});
        QVERIFY(t.elapsed() < 1500);
        QCOMPARE(kinds(c.collect(4000, 1)), QList<Kind>{Kind::Frame});
        QVERIFY(t.elapsed() >= 1800); // a coarse timer may fire up to 5% early
    }

    void powerLossCancelsTheOpenReceipt()
    {
        QVERIFY(emu->execute("SellReparto", {"1", "1", "", euro(3), "1", "1"}).isOk());
        emu->setPower(false);
        emu->setPower(true);
        QCOMPARE(emu->execute("ReadPrinterInfo", {"1"}).property("PrinterStatus"), QStringLiteral("0011"));
        QCOMPARE(emu->model().memory().journal.entries().last().kind, QStringLiteral("ANNULLATO"));
        QCOMPARE(emu->execute("ReadClosureState", {"1"}).property("ClosureState"), QStringLiteral("2"));
    }

    void trafficLogHasALinePerFrameAndControlByte()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        c.send('0', {"ReadIva", "1"});
        QCOMPARE(c.collect(2000, 2).size(), 2);
        QFile log(trafficPath());
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(log.readAll()).split('\n', Qt::SkipEmptyParts);
        QStringList traffic;
        for (const QString &l : lines)
            if (!l.contains(QStringLiteral(" -- ")))
                traffic << l;
        QCOMPARE(traffic.size(), 3);
        QVERIFY(traffic[0].contains(QStringLiteral("PC>PRN 02 30 52 65 61 64 49 76 61 1C 31 03")));
        QVERIFY(traffic[0].contains(QStringLiteral("| <STX>0ReadIva<FS>1<ETX>")));
        QVERIFY(traffic[1].contains(QStringLiteral("PRN>PC 06 | <ACK>")));
        QVERIFY(traffic[2].contains(QStringLiteral("<STX>00<FS>IvaNumber=1<FS>IvaAliquota=22<ETX>")));
        QVERIFY(traffic[0].contains(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} tcp 127\\.0\\.0\\.1:\\d+ "))));
    }
};

QTEST_GUILESS_MAIN(TestWireFaults)
#include "tst_WireFaults.moc"
