// SPDX-License-Identifier: GPL-3.0-or-later
// How fast a whole programming read goes from the program's control to the
// emulator over loopback TCP, beside a plain socket ping-pong that moves the
// same bytes in the same number of round trips, in the same process and the
// same way of waiting (a local event loop per call).
//
//   bench_programming_read [rounds]      (default 15)

#include "ProgrammingRead.h"
#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

struct Exchange
{
    qsizetype sent = 0;
    qsizetype received = 0;
};

// The plain ping-pong: the client sends n bytes and waits for m; the
// server answers m bytes once it has n.
class PingPong
{
public:
    explicit PingPong(const QList<Exchange> &script) : m_script(script)
    {
        m_server.listen(QHostAddress::LocalHost, 0);
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            m_peer = m_server.nextPendingConnection();
            m_peer->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            QObject::connect(m_peer, &QTcpSocket::readyRead, [this] {
                m_pending += m_peer->readAll().size();
                while (m_next < m_script.size() && m_pending >= m_script[m_next].sent) {
                    m_pending -= m_script[m_next].sent;
                    m_peer->write(QByteArray(m_script[m_next].received, 'x'));
                    ++m_next;
                }
            });
        });
        m_client.connectToHost(QHostAddress::LocalHost, m_server.serverPort());
        m_client.waitForConnected(2000);
        m_client.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QEventLoop loop;
        QTimer::singleShot(50, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void run()
    {
        m_next = 0;
        for (const Exchange &e : m_script) {
            m_client.write(QByteArray(e.sent, 'y'));
            m_client.flush();
            qsizetype got = 0;
            while (got < e.received) {
                if (m_client.bytesAvailable() <= 0) {
                    QEventLoop loop;
                    QObject::connect(&m_client, &QIODevice::readyRead, &loop, &QEventLoop::quit);
                    loop.exec();
                }
                got += m_client.read(e.received - got).size();
            }
        }
    }

private:
    QList<Exchange> m_script;
    QTcpServer m_server;
    QTcpSocket m_client;
    QTcpSocket *m_peer = nullptr;
    qsizetype m_pending = 0;
    qsizetype m_next = 0;
};

double median(QList<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? qMax(1, atoi(argv[1])) : 15;

    EmulatorServer emu{EmulatorConfig()};
    QString error;
    if (!emu.start(&error)) {
        fprintf(stderr, "emulator: %s\n", qPrintable(error));
        return 1;
    }
    KelvoProtocolControl control;
    if (!OpenControl(control, ListenForControl(emu))) {
        fprintf(stderr, "the control could not connect\n");
        return 1;
    }

    // One read to learn the byte counts of every exchange.
    QList<Exchange> script;
    control.setTrafficObserver([&script](KelvoProtocolControl::Direction d, const QByteArray &bytes) {
        if (d == KelvoProtocolControl::Direction::Sent)
            script.append({bytes.size(), 0});
        else if (!script.isEmpty())
            script.last().received += bytes.size();
    });
    const int calls = programmingRead(control);
    control.setTrafficObserver({});
    qsizetype sent = 0, received = 0;
    for (const Exchange &e : script) {
        sent += e.sent;
        received += e.received;
    }

    QList<double> viaControl, plain;
    PingPong pingPong(script);
    for (int r = 0; r < rounds; ++r) {
        // Turn about which goes first, so that neither always meets a warm
        // (or a cold) cache.
        QElapsedTimer t;
        auto timeControl = [&] {
            t.start();
            programmingRead(control);
            viaControl << t.nsecsElapsed() / 1e9;
        };
        auto timePlain = [&] {
            t.start();
            pingPong.run();
            plain << t.nsecsElapsed() / 1e9;
        };
        if (r % 2 == 0) {
            timeControl();
            timePlain();
        } else {
            timePlain();
            timeControl();
        }
    }
    const double c = median(viaControl), p = median(plain);
    const double ratio = (calls / c) / (calls / p);
    printf("programming read: %d calls, %lld bytes sent, %lld bytes received, %d rounds (median)\n", calls,
           qlonglong(sent), qlonglong(received), rounds);
    printf("control -> emulator : %.3f s per read, %8.0f calls/s\n", c, calls / c);
    printf("plain ping-pong     : %.3f s per read, %8.0f calls/s (same bytes, same round trips)\n", p, calls / p);
    printf("ratio               : %.2f (target at least 0.80) %s\n", ratio, ratio >= 0.8 ? "met" : "NOT MET");
    printf("whole read          : %.3f s (target under 1 s) %s\n", c, c < 1.0 ? "met" : "NOT MET");
    return 0;
}
