// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Helpers shared by the emulator's tests (header only: tests/emulator/tst_*.cpp
// each become one executable).

#include "emulator/EmulatorServer.h"
#include "emulator/PrinterModel.h"
#include "printer/WireFrame.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpSocket>
#include <QTest>

namespace Kit {

inline Reply run(PrinterModel &m, const char *name, const QList<QByteArray> &args = {})
{
    return m.execute(QByteArray(name), args);
}

inline QByteArray num(qint64 v)
{
    return QByteArray::number(v);
}

// Amount in wire form: units and cents.
inline QByteArray euro(qint64 units, qint64 cents = 0)
{
    return QByteArray::number(units * 10000 + cents * 100);
}

// A printer whose PC clock stands still at the given time until moved.
struct Clock
{
    QDateTime now = QDateTime(QDate(2026, 3, 10), QTime(9, 30, 0));
    void attach(PrinterModel &m)
    {
        m.context().systemClock = [this] { return now; };
    }
};

inline Reply sell(PrinterModel &m, int dept, qint64 units, qint64 cents = 0, const char *desc = "", int op = 1)
{
    return run(m, "SellReparto", {num(op), "1", desc, euro(units, cents), num(dept), "1"});
}

inline Reply payCash(PrinterModel &m, qint64 units = 0, qint64 cents = 0, int op = 1)
{
    return run(m, "PayReceipt", {num(op), "", euro(units, cents), "0", "0", "1"});
}

// Spins the event loop until pred holds or the time is up.
template <typename Pred>
bool waitFor(Pred pred, int ms = 3000)
{
    QDeadlineTimer deadline(ms);
    while (!pred()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

// A bare client of the wire, for tests that look at every byte.
class WireClient
{
public:
    bool connectTo(quint16 port)
    {
        socket.connectToHost(QHostAddress::LocalHost, port);
        return waitFor([this] { return socket.state() == QAbstractSocket::ConnectedState
                                       || socket.state() == QAbstractSocket::UnconnectedState; })
               && socket.state() == QAbstractSocket::ConnectedState;
    }
    void sendRaw(const QByteArray &bytes)
    {
        socket.write(bytes);
        socket.flush();
    }
    void send(char seq, const QList<QByteArray> &fields) { sendRaw(Wire::encodeFrame(seq, fields)); }
    // Collects what arrives during ms (or until count events came).
    QList<Wire::FrameDecoder::Event> collect(int ms, int count = 1000)
    {
        QList<Wire::FrameDecoder::Event> events;
        waitFor([&] {
            raw += socket.readAll();
            decoder.feed(raw.right(raw.size() - fed));
            fed = raw.size();
            while (auto e = decoder.next())
                events.append(*e);
            return events.size() >= count;
        }, ms);
        return events;
    }
    QTcpSocket socket;
    Wire::FrameDecoder decoder;
    QByteArray raw;
    qsizetype fed = 0;
};

inline QString field(const Wire::FrameDecoder::Event &e, const char *name)
{
    const QByteArray prefix = QByteArray(name) + '=';
    for (const QByteArray &f : e.fields)
        if (f.startsWith(prefix))
            return QString::fromLatin1(f.mid(prefix.size()));
    return {};
}

} // namespace Kit
