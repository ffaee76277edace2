#include "printer/Cp1252.h"
#include "printer/KelvoProtocolControl.h"
#include "printer/WireFrame.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

// A printer on loopback TCP, in the test's own thread, that does what each
// test tells it. Unless told otherwise it ACKs a request and answers "0".
class ScriptedPrinter : public QObject
{
public:
    struct Request
    {
        char seq;
        QList<QByteArray> fields;
    };

    ScriptedPrinter()
    {
        m_server.listen(QHostAddress::LocalHost, 0);
        QObject::connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *s = m_server.nextPendingConnection()) {
                m_peer = s;
                m_decoder.reset();
                ++connections;
                QObject::connect(s, &QTcpSocket::readyRead, this, [this, s] { take(s); });
            }
        });
    }

    int16_t port() const { return int16_t(m_server.serverPort()); }

    void ack() { write(QByteArray(1, Wire::ACK)); }
    void nak() { write(QByteArray(1, Wire::NAK)); }
    void answer(char seq, const QList<QByteArray> &fields) { write(Wire::encodeFrame(seq, fields)); }
    void write(const QByteArray &bytes)
    {
        m_peer->write(bytes);
        m_peer->flush();
    }
    void hangUp() { m_peer->disconnectFromHost(); }

    std::function<void(const Request &)> onRequest;
    QList<Request> requests;    // well-formed frames received
    QList<QByteArray> frames;   // the same frames as raw bytes, one per frame
    int connections = 0;
    QByteArray received;

private:
    void take(QTcpSocket *s)
    {
        const QByteArray bytes = s->readAll();
        received += bytes;
        m_decoder.feed(bytes);
        while (auto e = m_decoder.next()) {
            if (e->kind != Wire::FrameDecoder::Kind::Frame)
                continue;
            const Request r{e->seq, e->fields};
            requests.append(r);
            frames.append(Wire::encodeFrame(r.seq, r.fields));
            if (onRequest) {
                onRequest(r);
            } else {
                ack();
                answer(r.seq, {"0"});
            }
        }
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

    void connectControl()
    {
        control->setUseTcp(1);
        control->setEuroSettings(2);
        control->setIpAddress(QStringLiteral("127.0.0.1"));
        control->setTcpPort(printer->port());
        QCOMPARE(control->OpenTcp(), 0);
    }

    int16_t readReparto(int16_t index = 1) { return control->ReadReparto(index); }

private Q_SLOTS:
    void init()
    {
        printer = std::make_unique<ScriptedPrinter>();
        control = std::make_unique<KelvoProtocolControl>();
        connectControl();
    }
    void cleanup()
    {
        control.reset();
        printer.reset();
    }

    void requestFieldsAndSequence()
    {
        QCOMPARE(control->WriteIva(2, 5.5f), 0);
        int16_t op = 1;
        QCOMPARE(control->SellReparto(op, 1.5f, QStringLiteral("CAFFÈ €"), Currency::fromScaled(15000), 3, 1), 0);
        QCOMPARE(printer->requests[0].fields, (QList<QByteArray>{"WriteIva", "2", "5.5"}));
        QCOMPARE(printer->requests[1].fields,
                 (QList<QByteArray>{"SellReparto", "1", "1.5", "CAFF\xC8 \x80", "15000", "3", "1"}));
        control->setRawChannelName(QStringLiteral("FPEXTENDEDGRAPHIC"));
        QCOMPARE(control->OpenRawChannel(1), 0);
        QCOMPARE(printer->requests[2].fields, (QList<QByteArray>{"OpenRawChannel", "1", "FPEXTENDEDGRAPHIC"}));

        // SEQ '0' first, one step per request, '9' wraps to '0'.
        for (int i = 0; i < 9; ++i)
            QCOMPARE(readReparto(), 0);
        QByteArray seqs;
        for (const auto &r : printer->requests)
            seqs.append(r.seq);
        QCOMPARE(seqs, QByteArray("012345678901"));

        // A new connection starts again at '0'.
        QCOMPARE(control->OpenTcp(), 0);
        QCOMPARE(readReparto(), 0);
        QCOMPARE(printer->requests.last().seq, '0');
        QCOMPARE(printer->connections, 2);
    }

    void everyByteOfRawDataArrives()
    {
        QByteArray data;
        for (int b = 0; b < 256; ++b)
            data.append(char(b));
        QCOMPARE(control->SendRawData(data), 0);
        QCOMPARE(printer->requests[0].fields, (QList<QByteArray>{"SendRawData", data}));
    }

    void answerPropertiesAreCopied()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            printer->ack();
            printer->answer(r.seq, {"0", Cp1252::encode(QStringLiteral("RepartoDescrizione=FRUTTA È €")),
                                    "RepartoLimite=15000", "RepartoIva=2", "Odd=a=b", "no equals sign"});
        };
        QCOMPARE(readReparto(4), 0);
        QCOMPARE(control->RepartoDescrizione(), QStringLiteral("FRUTTA È €"));
        QCOMPARE(control->RepartoLimite(), Currency::fromScaled(15000));
        QCOMPARE(control->RepartoIva(), int16_t(2));
        QCOMPARE(control->property(QStringLiteral("Odd")), QStringLiteral("a=b"));
        QCOMPARE(control->property(QStringLiteral("no equals sign")), QString());
    }

    void refusalAndDetailCodes()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            printer->ack();
            printer->answer(r.seq, {"-1", "ErrorCode=22", "InfoCode=7"});
        };
        QCOMPARE(readReparto(), -1);
        QCOMPARE(control->ErrorCode(), int16_t(22));

        // The next answer that does not name them sets both back to 0.
        printer->onRequest = nullptr;
        QCOMPARE(readReparto(), 0);
        QCOMPARE(control->ErrorCode(), int16_t(0));
        QCOMPARE(control->InfoCode(), int16_t(0));

        // A result field that is neither 0 nor -1 is an unusable answer.
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            printer->ack();
            printer->answer(r.seq, {"OK"});
        };
        QCOMPARE(readReparto(), 4);
    }

    void nakTwiceThenAnswered()
    {
        int naks = 0;
        printer->onRequest = [&](const ScriptedPrinter::Request &r) {
            if (naks++ < 2)
                return printer->nak();
            printer->ack();
            printer->answer(r.seq, {"0", "FlagValue=1"});
        };
        int16_t flag = 3;
        QCOMPARE(control->ReadFlag(flag), 0);
        QCOMPARE(control->FlagValue(), int16_t(1));
        QCOMPARE(printer->frames.size(), 3);
        QCOMPARE(printer->frames[1], printer->frames[0]); // the very same frame, same SEQ
        QCOMPARE(printer->frames[2], printer->frames[0]);
    }

    void nakThreeTimes()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &) { printer->nak(); };
        QCOMPARE(readReparto(), 7);
        QCOMPARE(printer->frames.size(), 3);
    }

    void timeOuts_data()
    {
        QTest::addColumn<QString>("behaviour");
        QTest::addColumn<int>("result");
        QTest::newRow("no ACK") << "silent" << 7;
        QTest::newRow("ACK, no answer") << "ack" << 8;
        QTest::newRow("answer cut") << "cut" << 3;
        QTest::newRow("noise, no ACK") << "noise" << 7;
    }
    void timeOuts()
    {
        QFETCH(QString, behaviour);
        QFETCH(int, result);
        control->setTimeoutAck(1);
        control->setTimeoutOp(1);
        printer->onRequest = [&](const ScriptedPrinter::Request &r) {
            if (behaviour == QLatin1String("noise"))
                printer->write("\xff\xfe garbage\r\n");
            if (behaviour == QLatin1String("ack") || behaviour == QLatin1String("cut"))
                printer->ack();
            if (behaviour == QLatin1String("cut"))
                printer->write(Wire::encodeFrame(r.seq, {"0", "DgfeLine=abc"}).left(8));
        };
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(readReparto(), int16_t(result));
        QVERIFY2(clock.elapsed() >= 950 && clock.elapsed() < 2500, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(!control->Busy());

        // The line is still usable, and a late answer to the failed request is not taken.
        const char failedSeq = printer->requests.last().seq;
        printer->onRequest = [this, failedSeq](const ScriptedPrinter::Request &r) {
            printer->answer(failedSeq, {"-1", "ErrorCode=3"});
            printer->ack();
            printer->answer(r.seq, {"0"});
        };
        QCOMPARE(readReparto(), 0);
        QCOMPARE(control->ErrorCode(), int16_t(0));
    }

    void defaultTimeOuts()
    {
        // -1 leaves 2 s for the ACK and 10 s for the operation.
        control->setTimeoutAck(-1);
        control->setTimeoutOp(-1);
        printer->onRequest = [](const ScriptedPrinter::Request &) {};
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(readReparto(), 7);
        QVERIFY2(clock.elapsed() >= 1950 && clock.elapsed() < 3500, qPrintable(QString::number(clock.elapsed())));

        // An answer after 9 s is still in time; its ACK came at once.
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            printer->ack();
            QTimer::singleShot(9000, Qt::PreciseTimer, printer.get(), [this, r] { printer->answer(r.seq, {"0"}); });
        };
        clock.restart();
        QCOMPARE(readReparto(), 0);
        QVERIFY2(clock.elapsed() >= 8950, qPrintable(QString::number(clock.elapsed())));
    }

    void wrongChecksum()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            QByteArray frame = Wire::encodeFrame(r.seq, {"0", "RepartoNumber=1"});
            frame[frame.size() - 1] = frame.endsWith('0') ? '1' : '0';
            printer->ack();
            printer->write(frame);
        };
        QCOMPARE(readReparto(), 4);
    }

    void staleAnswersAreDiscarded()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            const char other = Wire::nextSeq(r.seq);
            printer->ack();
            printer->answer(other, {"-1", "ErrorCode=11"});          // someone else's answer
            QByteArray broken = Wire::encodeFrame(other, {"0"});
            broken[broken.size() - 1] = broken.endsWith('0') ? '1' : '0';
            printer->write(broken);                                   // and a damaged one
            printer->write("noise");
            printer->answer(r.seq, {"0", "ClosureState=2"});
        };
        QCOMPARE(control->ReadClosureState(1), 0);
        QCOMPARE(control->ClosureState(), 2);
        QCOMPARE(control->ErrorCode(), int16_t(0));
    }

    void answerWithoutAckIsTaken()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &r) { printer->answer(r.seq, {"0"}); };
        QCOMPARE(readReparto(), 0);
    }

    void peerClosesTheConnection()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &r) {
            printer->ack();
            printer->answer(r.seq, {"0", "Azzeramenti=4"});
            printer->hangUp(); // right after a complete answer: that answer still counts
        };
        control->ReadAzzeramenti();
        QCOMPARE(control->Azzeramenti(), 4);

        int32_t state = 0;
        QTRY_VERIFY(!control->IsTcpOpen(state));
        QCOMPARE(readReparto(), 1); // lost, not merely closed
        QCOMPARE(readReparto(), 1);
        control->setUseTcp(0);
        QCOMPARE(readReparto(), 2); // the serial port was never open: the TCP loss is not its own
        control->setUseTcp(1);
        control->CloseTcp();
        QCOMPARE(readReparto(), 2);
    }

    void peerClosesWhileWaiting()
    {
        printer->onRequest = [this](const ScriptedPrinter::Request &) {
            printer->ack();
            printer->hangUp();
        };
        QCOMPARE(readReparto(), 1);
        int32_t state = 0;
        QVERIFY(!control->IsTcpOpen(state));
    }

    void openTcpRefused()
    {
        const int16_t port = printer->port();
        printer.reset(); // nobody listens there any more
        control = std::make_unique<KelvoProtocolControl>();
        control->setUseTcp(1);
        control->setEuroSettings(2);
        control->setIpAddress(QStringLiteral("127.0.0.1"));
        control->setTcpPort(port);
        QVERIFY(control->OpenTcp() != 0);
        int32_t state = 0;
        QVERIFY(!control->IsTcpOpen(state));
        QCOMPARE(readReparto(), 1);
    }

    void nothingSentWithoutCause()
    {
        // Local members never reach the line.
        int32_t state = 0;
        QVERIFY(control->IsTcpOpen(state));
        control->setTimeoutAck(5);
        control->setComSettings(QStringLiteral("9600,n,8,1"));
        (void)control->Busy();
        (void)control->RepartoDescrizione();
        (void)control->ErrorCode();
        (void)control->DateDay();

        control->setEuroSettings(0);
        QCOMPARE(readReparto(), 5);
        control->setEuroSettings(2);

        QString missing = QStringLiteral("/nonexistent/logo.bin");
        QCOMPARE(control->LoadLogoFile(missing), 6);
        QString folder = QDir::tempPath();
        QCOMPARE(control->LoadLogoFile(folder), 6); // a folder is no file

        control->setUseTcp(0); // the serial port was never opened
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

        QString path = file.fileName();
        QCOMPARE(control->LoadLogoFile(path), 0);
        QCOMPARE(printer->requests.last().fields, (QList<QByteArray>{"LoadLogoFile", content}));

        // As the program may spell it: backslashes, another case.
        QString spelled = dir.path() + QStringLiteral("\\LoghiStandard\\02_pasqua_80.BIN");
        QCOMPARE(control->LoadLogoFile(spelled), 0);
        QCOMPARE(printer->requests.last().fields.value(1), content);
    }

    void callDuringCall()
    {
        int16_t nested = 0;
        bool busyMeanwhile = false;
        int32_t openMeanwhile = 0;
        printer->onRequest = [&](const ScriptedPrinter::Request &r) {
            // The control waits in its event loop; a click arriving now calls again.
            busyMeanwhile = control->Busy();
            nested = control->ReadDateTime();
            QString logo = QStringLiteral("/nonexistent");
            QCOMPARE(control->LoadLogoFile(logo), 9);
            openMeanwhile = control->OpenTcp();
            printer->ack();
            printer->answer(r.seq, {"0", "DateTime=2026-11-21T10:05:00"});
        };
        QCOMPARE(control->ReadDateTime(), 0);
        QVERIFY(busyMeanwhile);
        QCOMPARE(nested, 9);
        QCOMPARE(openMeanwhile, 9);
        QVERIFY(!control->Busy());
        QCOMPARE(printer->requests.size(), 1);
        QCOMPARE(printer->connections, 1);
        QCOMPARE(control->DateTime(), QDateTime(QDate(2026, 11, 21), QTime(10, 5)));
        QCOMPARE(control->DateYear(), int16_t(26));
    }

    void closeWhileWaiting()
    {
        printer->onRequest = [&](const ScriptedPrinter::Request &) {
            printer->ack();
            control->CloseTcp(); // the technician gives up
        };
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(readReparto(), 1);
        QVERIFY(clock.elapsed() < 1000);
        QCOMPARE(readReparto(), 2); // closed by the program, not lost
    }

    void closingTheOtherPortLeavesTheCallAlone()
    {
        printer->onRequest = [&](const ScriptedPrinter::Request &r) {
            control->CloseComPort();
            printer->ack();
            printer->answer(r.seq, {"0"});
        };
        QCOMPARE(readReparto(), 0);
        int32_t state = 0;
        QVERIFY(control->IsTcpOpen(state));
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
