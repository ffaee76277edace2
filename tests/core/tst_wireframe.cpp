// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Cp1252.h"
#include "printer/WireFrame.h"

#include <QTest>

using Wire::FrameDecoder;

namespace {

QList<FrameDecoder::Event> decodeAll(const QByteArray &bytes, int chunk = 0)
{
    FrameDecoder decoder;
    const qsizetype step = chunk > 0 ? chunk : bytes.size(); // 0: all at once
    for (qsizetype i = 0; i < bytes.size(); i += step)
        decoder.feed(bytes.mid(i, step));
    QList<FrameDecoder::Event> events;
    while (auto e = decoder.next())
        events.append(*e);
    return events;
}

// STX, the body as given (SEQ ... ETX) and its checksum.
QByteArray summed(const QByteArray &body)
{
    unsigned sum = 0;
    for (char c : body)
        sum += static_cast<unsigned char>(c);
    return QByteArray(1, Wire::STX) + body + QByteArray::number(sum % 65536, 16).toUpper().rightJustified(4, '0');
}

QByteArray allBytes()
{
    QByteArray bytes;
    for (int b = 0; b < 256; ++b)
        bytes.append(char(b));
    return bytes;
}

}

class TestWireFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documentedExampleBytes()
    {
        QCOMPARE(Wire::encodeFrame('0', {"ReadDateTime"}), QByteArray("\x02" "0ReadDateTime\x03" "04BC"));
        QCOMPARE(Wire::encodeFrame('4', {"SendRawData", QByteArray("A\x03\x1C" "B")}),
                 QByteArray("\x02" "4SendRawData\x1C" "A\x10\x43\x10\x5C" "B\x03" "05C3"));
        // A sum above FFFF keeps only its low four digits.
        const QByteArray big = Wire::encodeFrame('1', {QByteArray(300, char(0xFF))});
        QCOMPARE(big.right(4), QByteArray::number((0x31 + 300 * 0xFF + 0x03) & 0xFFFF, 16).toUpper().rightJustified(4, '0'));
    }

    void escapingKeepsControlBytesOutOfTheBody()
    {
        const QByteArray frame = Wire::encodeFrame('7', {allBytes(), allBytes()});
        const QByteArray body = frame.mid(2, frame.size() - 2 - 5); // between SEQ and ETX
        for (char c : {Wire::STX, Wire::ETX, Wire::ACK, Wire::NAK})
            QVERIFY(!body.contains(c));
        QCOMPARE(body.count(Wire::FS), 1); // only the separator
        for (char c : {Wire::STX, Wire::ETX, Wire::ACK, Wire::DLE, Wire::NAK, Wire::FS})
            QVERIFY(body.contains(QByteArray(1, Wire::DLE) + char(c + 0x40)));
    }

    void roundTrips_data()
    {
        QTest::addColumn<QList<QByteArray>>("fields");
        QTest::newRow("every byte value") << QList<QByteArray>{"SendRawData", allBytes()};
        QTest::newRow("only control bytes") << QList<QByteArray>{QByteArray("\x02\x03\x06\x10\x15\x1C\x10\x10")};
        QTest::newRow("empty fields") << QList<QByteArray>{"", "a", "", ""};
        QTest::newRow("one empty field") << QList<QByteArray>{""};
        QTest::newRow("at the size limit") << QList<QByteArray>{QByteArray(Wire::MaxFrameBody - 2, 'a')}; // + SEQ + ETX
        const QByteArray text = Cp1252::encode(QStringLiteral("RepartoDescrizione=CAFFÈ à è é ì ò ù € «œ»"));
        QVERIFY(text.contains("\xC8 \xE0 \xE8 \xE9 \xEC \xF2 \xF9 \x80 \xAB\x9C\xBB")); // one byte each
        QTest::newRow("Windows-1252 text") << QList<QByteArray>{"0", text};
    }
    void roundTrips()
    {
        QFETCH(QList<QByteArray>, fields);
        const QByteArray frame = Wire::encodeFrame('3', fields);
        for (int chunk : {0, 1, 2, 7}) {
            const auto events = decodeAll(frame, chunk);
            QCOMPARE(events.size(), 1);
            QCOMPARE(events[0].kind, FrameDecoder::Kind::Frame);
            QCOMPARE(events[0].seq, '3');
            QCOMPARE(events[0].fields, fields);
        }
        if (fields.size() == 2 && fields[0] == "0")
            QCOMPARE(Cp1252::decode(fields[1]), QStringLiteral("RepartoDescrizione=CAFFÈ à è é ì ò ù € «œ»"));
    }

    void noiseAckAndNakBetweenFrames()
    {
        const QByteArray a = Wire::encodeFrame('1', {"A"});
        const QByteArray b = Wire::encodeFrame('2', {"B"});
        const QByteArray line = QByteArray("xx\r\n\xff") + Wire::ACK + a + "garbage" + Wire::NAK + QByteArray(3, '\0') + b;
        for (int chunk : {0, 1, 5}) {
            const auto events = decodeAll(line, chunk);
            QCOMPARE(events.size(), 4);
            QCOMPARE(events[0].kind, FrameDecoder::Kind::Ack);
            QCOMPARE(events[1].fields, QList<QByteArray>{"A"});
            QCOMPARE(events[2].kind, FrameDecoder::Kind::Nak);
            QCOMPARE(events[3].fields, QList<QByteArray>{"B"});
        }
    }

    void damagedFrames_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<char>("seq"); // what the damaged frame still tells of its SEQ
        const QByteArray good = Wire::encodeFrame('5', {"0", "X=1"});
        QByteArray wrongSum = good;
        wrongSum[wrongSum.size() - 1] = wrongSum.endsWith('0') ? '1' : '0';
        QTest::newRow("wrong checksum") << wrongSum << '5';
        QTest::newRow("cut before ETX") << good.left(good.size() - 6) << '5';
        QTest::newRow("cut in checksum") << good.left(good.size() - 2) << '5';
        QByteArray lower = summed("4z\x03"); // sums to 00B1
        QVERIFY(lower.endsWith("00B1"));
        lower.replace("00B1", "00b1");
        QTest::newRow("lower-case checksum") << lower << '4';
        // Well summed, but not well formed:
        QTest::newRow("bad escape") << summed("6A\x10\x41\x03") << '6';
        QTest::newRow("DLE before ETX") << summed("6A\x10\x03") << '6';
        QTest::newRow("bare ACK in body") << summed("6A\x06" "B\x03") << '6';
        QTest::newRow("SEQ not a digit") << summed("XA\x03") << char(0);
        QTest::newRow("over the size limit") << Wire::encodeFrame('1', {QByteArray(Wire::MaxFrameBody - 1, 'a')}) << '1';
    }
    void damagedFrames()
    {
        // A damaged frame is reported once and does not take the next one with it.
        QFETCH(QByteArray, bytes);
        QFETCH(char, seq);
        QByteArray line = bytes;
        line += Wire::encodeFrame('9', {"next"});
        for (int chunk : {0, 1, 3, 4096}) {
            const auto events = decodeAll(line, chunk);
            QCOMPARE(events.size(), 2);
            QCOMPARE(events[0].kind, FrameDecoder::Kind::BadFrame);
            QCOMPARE(events[0].seq, seq);
            QCOMPARE(events[1].kind, FrameDecoder::Kind::Frame);
            QCOMPARE(events[1].fields, QList<QByteArray>{"next"});
        }
    }
};

QTEST_GUILESS_MAIN(TestWireFrame)
#include "tst_wireframe.moc"
