// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Cp1252.h"
#include "printer/KelvoProtocolControl.h"
#include "printer/WireFrame.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

QByteArray damaged(QByteArray frame)
{
    frame[frame.size() - 1] = frame.endsWith('0') ? '1' : '0';
    return frame;
}

// A printer on loopback TCP, in the test's own thread. `behaviour` says what
// it does with each request; `onRequest`, when set, replaces it.
class ScriptedPrinter : public QObject
{
public:
    QString behaviour = QStringLiteral("answer");
    QList<QByteArray> reply{"0"};
    std::function<void(char seq)> onRequest;
    QList<QList<QByteArray>> requests;
    QList<char> seqs;
    QByteArray received;
    int connections = 0;

    ScriptedPrinter()
    {
        m_server.listen(QHostAddress::LocalHost, 0);
        QObject::connect(&m_server, &QTcpServer::newConnection, this, [this] {
            m_peer = m_server.nextPendingConnection();
            ++connections;
            QObject::connect(m_peer, &QTcpSocket::readyRead, this, [this, s = m_peer] { take(s->readAll()); });
        });
    }
    int16_t port() const { return int16_t(m_server.serverPort()); }
    void write(const QByteArray &bytes)
    {
        m_peer->write(bytes);
        m_peer->flush();
    }
    void ack() { write(QByteArray(1, Wire::ACK)); }
    void hangUp() { m_peer->disconnectFromHost(); }
    void answer(char seq, const QList<QByteArray> &fields) { write(Wire::encodeFrame(seq, fields)); }

private:
    void take(const QByteArray &bytes)
    {
        received += bytes;
        m_decoder.feed(bytes);
        while (auto e = m_decoder.next()) {
            if (e->kind != Wire::FrameDecoder::Kind::Frame)
                continue;
            requests.append(e->fields);
            seqs.append(e->seq);
            if (onRequest)
                onRequest(e->seq);
            else
                behave(e->seq);
        }
    }

    void behave(char seq)
    {
        const QByteArray frame = Wire::encodeFrame(seq, reply);
        const char other = Wire::nextSeq(seq);
        if (behaviour == "nak" || (behaviour == "nak2" && requests.size() <= 2))
            return write(QByteArray(1, Wire::NAK));
        if (behaviour == "silent")
            return;
        if (behaviour != "noack")
            ack();
        if (behaviour == "answer" || behaviour == "nak2" || behaviour == "noack")
            write(frame);
        else if (behaviour == "cut")
            write(frame.left(frame.size() - 2)); // no end: two checksum digits missing
        else if (behaviour == "badsum")
            write(damaged(frame));
        else if (behaviour == "stale")
            write(Wire::encodeFrame(other, {"-1", "ErrorCode=11"}) + damaged(Wire::encodeFrame(other, {"0"}))
                  + "noise" + frame);
        else if (behaviour == "hangup")
            hangUp();
    }

    QTcpServer m_server;
    QTcpSocket *m_peer = nullptr;
    Wire::FrameDecoder m_decoder;
};

}

class TestProtocolControl : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedPrinter> printer;
    std::unique_ptr<KelvoProtocolControl> control;

    int16_t readReparto(int16_t index = 1) { return control->ReadReparto(index); }
    bool tcpOpen()
    {
        int32_t state = 0;
        return control->IsTcpOpen(state);
    }

private Q_SLOTS:
    void init()
    {
        printer = std::make_unique<ScriptedPrinter>();
        control = std::make_unique<KelvoProtocolControl>();
        control->setUseTcp(1);
        control->setEuroSettings(2);
        control->setIpAddress(QStringLiteral("127.0.0.1"));
        control->setTcpPort(printer->port());
        QCOMPARE(control->OpenTcp(), 0);
    }
    void cleanup()
    {
        control.reset();
        printer.reset();
    }

    void requestFieldsAndSequence()
    {
        int16_t op = 1;
        QCOMPARE(control->SellReparto(op, 1.5f, QStringLiteral("CAFFÈ €"), Currency::fromScaled(15000), 3, 1), 0);
        QCOMPARE(printer->requests[0], (QList<QByteArray>{"SellReparto", "1", "1.5", "CAFF\xC8 \x80", "15000", "3", "1"}));
        control->setRawChannelName(QStringLiteral("FPEXTENDEDGRAPHIC"));
        QCOMPARE(control->OpenRawChannel(1), 0);
        QCOMPARE(printer->requests[1], (QList<QByteArray>{"OpenRawChannel", "1", "FPEXTENDEDGRAPHIC"}));
        QByteArray data;
        for (int b = 0; b < 256; ++b)
            data.append(char(b));
        QCOMPARE(control->SendRawData(data), 0);
        QCOMPARE(printer->requests[2], (QList<QByteArray>{"SendRawData", data}));

        for (int i = 0; i < 9; ++i)
            QCOMPARE(readReparto(), 0);
        QCOMPARE(QByteArray(printer->seqs.constData(), printer->seqs.size()), QByteArray("012345678901"));
        QCOMPARE(control->OpenTcp(), 0); // a new connection starts again at '0'
        QCOMPARE(readReparto(), 0);
        QCOMPARE(printer->seqs.last(), '0');
        QCOMPARE(printer->connections, 2);
    }

    void resultCodes_data()
    {
        QTest::addColumn<QString>("behaviour");
        QTest::addColumn<QList<QByteArray>>("reply");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("sends");
        QTest::addColumn<int>("errorCode");
        const QList<QByteArray> ok{"0"};
        QTest::newRow("answer") << "answer" << ok << 0 << 1 << 0;
        QTest::newRow("refusal") << "answer" << QList<QByteArray>{"-1", "ErrorCode=22"} << -1 << 1 << 22;
        QTest::newRow("result field not 0 or -1") << "answer" << QList<QByteArray>{"OK"} << 4 << 1 << 0;
        QTest::newRow("NAK twice, then answer") << "nak2" << ok << 0 << 3 << 0;
        QTest::newRow("NAK three times") << "nak" << ok << 7 << 3 << 0;
        QTest::newRow("no ACK") << "silent" << ok << 7 << 1 << 0;
        QTest::newRow("ACK, no answer") << "ack" << ok << 8 << 1 << 0;
        QTest::newRow("answer cut") << "cut" << ok << 3 << 1 << 0;
        QTest::newRow("wrong checksum") << "badsum" << ok << 4 << 1 << 0;
        QTest::newRow("stale answers first") << "stale" << ok << 0 << 1 << 0;
        QTest::newRow("answer without ACK") << "noack" << ok << 0 << 1 << 0;
        QTest::newRow("peer hangs up") << "hangup" << ok << 1 << 1 << 0;
    }
    void resultCodes()
    {
        QFETCH(QString, behaviour);
        QFETCH(QList<QByteArray>, reply);
        QFETCH(int, result);
        QFETCH(int, sends);
        QFETCH(int, errorCode);
        control->setTimeoutAck(1);
        control->setTimeoutOp(1);
        printer->behaviour = behaviour;
        printer->reply = reply;
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(readReparto(), int16_t(result));
        QCOMPARE(printer->requests.size(), sends);
        QCOMPARE(control->ErrorCode(), int16_t(errorCode));
        QVERIFY(!control->Busy());
        const bool timedOut = result == 3 || result == 8 || (result == 7 && sends == 1);
        QVERIFY2(timedOut == (clock.elapsed() >= 950) && clock.elapsed() < 4000, qPrintable(QString::number(clock.elapsed())));
        if (result == 1)
            return;

        // The line goes on; a late answer to the failed request is not taken for the next one.
        const char failed = printer->seqs.last();
        printer->onRequest = [this, failed](char seq) {
            printer->answer(failed, {"-1", "ErrorCode=3"});
            printer->ack();
            printer->answer(seq, {"0", "RepartoNumber=5"});
        };
        QCOMPARE(readReparto(), 0);
        QCOMPARE(control->RepartoNumber(), int16_t(5));
        QCOMPARE(control->ErrorCode(), int16_t(0));
    }

    void defaultTimeOuts()
    {
        // -1: 2 s for the ACK, 10 s for the operation.
        control->setTimeoutAck(-1);
        control->setTimeoutOp(-1);
        printer->behaviour = QStringLiteral("silent");
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(readReparto(), 7);
        QVERIFY2(clock.elapsed() >= 1950 && clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
        printer->onRequest = [this](char seq) {
            printer->ack();
            QTimer::singleShot(9000, Qt::PreciseTimer, printer.get(), [this, seq] { printer->answer(seq, {"0"}); });
        };
        clock.restart();
        QCOMPARE(readReparto(), 0);
        QVERIFY2(clock.elapsed() >= 8950, qPrintable(QString::number(clock.elapsed())));
    }

    void answerPropertiesAreCopied()
    {
        printer->reply = {"0", Cp1252::encode(QStringLiteral("RepartoDescrizione=FRUTTA È €")), "RepartoLimite=15000",
                          "InfoCode=3102", "Odd=a=b", "no equals sign"};
        QCOMPARE(readReparto(4), 0);
        QCOMPARE(control->RepartoDescrizione(), QStringLiteral("FRUTTA È €"));
        QCOMPARE(control->RepartoLimite(), Currency::fromScaled(15000));
        QCOMPARE(control->InfoCode(), int16_t(3102));
        QCOMPARE(control->property(QStringLiteral("Odd")), QStringLiteral("a=b"));
        QCOMPARE(control->property(QStringLiteral("no equals sign")), QString());
        printer->reply = {"0"};
        QCOMPARE(readReparto(5), 0);
        QCOMPARE(control->InfoCode(), int16_t(0)); // each answer tells its own detail codes
        QCOMPARE(control->RepartoDescrizione(), QStringLiteral("FRUTTA È €"));
    }

    void lostConnection()
    {
        printer->onRequest = [this](char seq) {
            printer->ack();
            printer->answer(seq, {"0", "Azzeramenti=4"});
            printer->hangUp(); // right after a whole answer, which still counts
        };
        control->ReadAzzeramenti();
        QCOMPARE(control->Azzeramenti(), 4);
        QTRY_VERIFY(!tcpOpen()); // seen while idle
        printer->onRequest = nullptr;
        QCOMPARE(readReparto(), 0); // lost, not closed: the command opens it again
        QCOMPARE(printer->connections, 2);
        QCOMPARE(printer->seqs.last(), '0'); // a new connection numbers anew
        control->setUseTcp(0);
        QCOMPARE(readReparto(), 2); // the serial port was never open
        control->setUseTcp(1);
        control->CloseTcp();
        QCOMPARE(readReparto(), 2); // closed by the program: left closed
        QCOMPARE(printer->connections, 2);

        printer.reset(); // nobody listens any more
        QVERIFY(control->OpenTcp() != 0);
        QVERIFY(!tcpOpen());
        QCOMPARE(readReparto(), 1);
        QCOMPARE(readReparto(), 1); // each command tries once more
    }

    void nothingSentWithoutCause()
    {
        QVERIFY(tcpOpen()); // local members stay off the line
        control->setTimeoutAck(5);
        control->setComSettings(QStringLiteral("9600,n,8,1"));
        (void)control->Busy();
        (void)control->RepartoDescrizione();
        (void)control->DateDay();

        control->setEuroSettings(0);
        QCOMPARE(readReparto(), 5);
        control->setEuroSettings(2);
        QString missing = QStringLiteral("/nonexistent/logo.bin");
        QCOMPARE(control->LoadLogoFile(missing), 6);
        QString folder = QDir::tempPath();
        QCOMPARE(control->LoadLogoFile(folder), 6);
        control->setUseTcp(0);
        QCOMPARE(readReparto(), 2);
        QTest::qWait(50);
        QCOMPARE(printer->received, QByteArray());
    }

    void loadLogoFileSendsTheContent()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("LoghiStandard")));
        QFile file(dir.filePath(QStringLiteral("LoghiStandard/02_pasqua_80.bin")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray content = QByteArray("\x1D\x28\x45\x02\x03\x10\x1C\xFF", 8) + QByteArray(300, 'L');
        file.write(content);
        file.close();
        // As the program may spell it: backslashes, another case.
        QString path = dir.path() + QStringLiteral("\\LoghiStandard\\02_pasqua_80.BIN");
        QCOMPARE(control->LoadLogoFile(path), 0);
        QCOMPARE(printer->requests.last(), (QList<QByteArray>{"LoadLogoFile", content}));
    }

    void callDuringCall()
    {
        int16_t nested = 0, nestedLogo = 0;
        int32_t nestedOpen = 0;
        bool busy = false;
        printer->onRequest = [&](char seq) {
            // The control waits in its event loop; a click arriving now calls again.
            busy = control->Busy();
            nested = control->ReadDateTime();
            QString logo = QStringLiteral("/nonexistent");
            nestedLogo = control->LoadLogoFile(logo);
            nestedOpen = control->OpenTcp();
            control->CloseComPort(); // not the port of the call: no effect on it
            printer->ack();
            printer->answer(seq, {"0", "DateTime=2026-11-21T10:05:00"});
        };
        QCOMPARE(control->ReadDateTime(), 0);
        QVERIFY(busy);
        QCOMPARE(nested, 9);
        QCOMPARE(nestedLogo, 9);
        QCOMPARE(nestedOpen, 9);
        QVERIFY(!control->Busy());
        QCOMPARE(printer->requests.size(), 1);
        QCOMPARE(printer->connections, 1);
        QCOMPARE(control->DateTime(), QDateTime(QDate(2026, 11, 21), QTime(10, 5)));
        QCOMPARE(control->DateYear(), int16_t(26));

        printer->onRequest = [this](char) { control->CloseTcp(); }; // the technician gives up
        QCOMPARE(readReparto(), 1);
        QCOMPARE(readReparto(), 2); // closed by the program, not lost
    }

    void trafficObserverSeesBothWays()
    {
        QByteArray sent, received;
        control->setTrafficObserver([&](KelvoProtocolControl::Direction d, const QByteArray &bytes) {
            (d == KelvoProtocolControl::Direction::Sent ? sent : received) += bytes;
        });
        QCOMPARE(readReparto(7), 0);
        QCOMPARE(sent, Wire::encodeFrame('0', {"ReadReparto", "7"}));
        QCOMPARE(received, QByteArray(1, Wire::ACK) + Wire::encodeFrame('0', {"0"}));
    }
};

QTEST_GUILESS_MAIN(TestProtocolControl)
#include "tst_protocolcontrol.moc"
