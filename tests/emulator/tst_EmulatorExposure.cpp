// SPDX-License-Identifier: GPL-3.0-or-later
// The emulator facing a hostile or broken client: loopback unless told, bounded
// connections, floods that do not grow its memory; afterwards it still answers.
#include "EmulatorTestKit.h"
#include "emulator/EmulatorOptions.h"
#include "emulator/WireSession.h"

#include <QRandomGenerator>

#include <unistd.h>

using namespace Kit;

namespace {

qint64 residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    return statm.open(QIODevice::ReadOnly) ? statm.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}

// (AddressSanitizer holds freed memory back on purpose: no measure there.)
void grewLessThan(qint64 before, qint64 limit)
{
#if !defined(__SANITIZE_ADDRESS__)
    const qint64 grown = residentBytes() - before;
    QVERIFY2(grown < limit, qPrintable(QStringLiteral("grew by %1 KiB").arg(grown / 1024)));
#else
    Q_UNUSED(before) Q_UNUSED(limit)
#endif
}

// Sends bytes in chunks, letting the emulator (same thread) read each one.
void pour(WireClient &c, const QByteArray &chunk, int times)
{
    for (int i = 0; i < times && c.socket.state() == QAbstractSocket::ConnectedState; ++i) {
        c.socket.write(chunk);
        waitFor([&c] { return c.socket.bytesToWrite() == 0; }, 2000);
        QCoreApplication::processEvents();
    }
}

bool answersReadDateTime(quint16 port)
{
    WireClient c;
    if (!c.connectTo(port))
        return false;
    c.send('1', {"ReadDateTime"});
    const auto events = c.collect(3000, 2);
    return events.size() == 2 && events[1].kind == Wire::FrameDecoder::Kind::Frame
           && events[1].fields.value(0) == "0";
}

} // namespace

class TestEmulatorExposure : public QObject
{
    Q_OBJECT

    std::unique_ptr<EmulatorServer> emu;

private Q_SLOTS:
    void init()
    {
        emu = std::make_unique<EmulatorServer>(EmulatorConfig());
        QVERIFY(emu->start());
        QVERIFY(emu->listenTcp(QHostAddress::LocalHost, 0));
    }
    void cleanup() { emu.reset(); }

    void listensOnLoopbackUnlessTold()
    {
        QVERIFY(EmulatorConfig().tcpAddress.isLoopback());
        for (const auto &[address, loopback] : {std::pair{"4660", true}, {"localhost:4660", true}, {"*:4660", false},
                                                {"0.0.0.0:4660", false}}) {
            EmulatorOptions options;
            QCOMPARE(options.parse({"emu", "--tcp", address}), QString());
            QCOMPARE(options.config.tcpAddress.isLoopback(), loopback);
        }
    }

    void floodsDoNotGrowMemory_data()
    {
        QTest::addColumn<QByteArray>("chunk");
        QByteArray noise(64 * 1024, 0);
        for (char &c : noise) {
            c = char(QRandomGenerator::global()->bounded(256));
            if (c == Wire::STX || c == Wire::ACK || c == Wire::NAK)
                c = 'x';
        }
        QTest::newRow("noise") << noise;
        QByteArray half;
        while (half.size() < 64 * 1024)
            half += QByteArray(1, Wire::STX) + "0ReadDateTime" + QByteArray(1, Wire::FS) + "1";
        QTest::newRow("half frames") << half;
        QTest::newRow("frame without end") << QByteArray(1, Wire::STX) + QByteArray(64 * 1024, 'A');
        QTest::newRow("acks and naks") << QByteArray(32 * 1024, Wire::ACK) + QByteArray(32 * 1024, Wire::NAK);
    }

    void floodsDoNotGrowMemory()
    {
        QFETCH(QByteArray, chunk);
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        pour(c, chunk, 16); // settle the allocator first
        const qint64 before = residentBytes();
        pour(c, chunk, 512); // 32 MiB
        grewLessThan(before, 8 * 1024 * 1024);
        QVERIFY(answersReadDateTime(emu->tcpPort()));
    }

    void clientThatNeverReadsIsDropped()
    {
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        c.socket.setReadBufferSize(1); // the client reads nothing, so the kernel fills up
        QByteArray requests;
        for (int i = 0; i < 200; ++i)
            requests += Wire::encodeFrame(char('0' + i % 10), {"ReadHeaderLine", "1"});
        const qint64 before = residentBytes();
        // (A client that reads nothing does not see its own end either: the
        // printer's side is asked.)
        for (int i = 0; i < 3000 && emu->connectionCount() > 0; ++i) {
            if (c.socket.bytesToWrite() < 1024 * 1024)
                c.socket.write(requests);
            QCoreApplication::processEvents();
        }
        QVERIFY(waitFor([this] { return emu->connectionCount() == 0; }, 10000));
        grewLessThan(before, 32 * 1024 * 1024);
        QVERIFY(answersReadDateTime(emu->tcpPort()));
    }

    void connectionsAreBounded()
    {
        std::vector<std::unique_ptr<WireClient>> clients;
        for (int i = 0; i < EmulatorServer::MaxConnections + 4; ++i) {
            clients.push_back(std::make_unique<WireClient>());
            clients.back()->connectTo(emu->tcpPort());
        }
        waitFor([] { return false; }, 300); // the refused ones are closed
        QCOMPARE(emu->connectionCount(), EmulatorServer::MaxConnections);
        QVERIFY(!answersReadDateTime(emu->tcpPort()));
        clients.clear(); // once they go, the printer serves again
        QVERIFY(waitFor([this] { return emu->connectionCount() == 0; }));
        QVERIFY(answersReadDateTime(emu->tcpPort()));
    }

    void slowPrinterRefusesWhatItCannotQueue()
    {
        emu->faults().slowMs = 50;
        WireClient c;
        QVERIFY(c.connectTo(emu->tcpPort()));
        QByteArray burst;
        for (int i = 0; i < WireSession::MaxQueued + 10; ++i)
            burst += Wire::encodeFrame(char('0' + i % 10), {"ReadDateTime"});
        c.sendRaw(burst);
        const auto events = c.collect(3000); // all of it: the answers come slowly
        int acks = 0, naks = 0, frames = 0;
        for (const auto &e : events) {
            acks += e.kind == Wire::FrameDecoder::Kind::Ack;
            naks += e.kind == Wire::FrameDecoder::Kind::Nak;
            frames += e.kind == Wire::FrameDecoder::Kind::Frame;
        }
        // The first is taken at once, the queue holds the next ones, the rest are refused.
        QVERIFY(acks >= WireSession::MaxQueued && acks <= WireSession::MaxQueued + 1);
        QCOMPARE(acks + naks, WireSession::MaxQueued + 10);
        QCOMPARE(frames, acks);
    }
};

QTEST_GUILESS_MAIN(TestEmulatorExposure)
#include "tst_EmulatorExposure.moc"
