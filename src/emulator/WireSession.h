// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FaultSwitches.h"
#include "Reply.h"
#include "printer/WireFrame.h"

#include <QList>
#include <QObject>
#include <functional>

class TrafficLog;

// The printer's side of one connection (a TCP client or the pseudo-terminal):
// reads requests, answers ACK or NAK at once, has each request executed in
// turn and sends its response with the request's SEQ. The wire faults are
// applied here. The transport feeds receive() and sends what output() gives.
class WireSession : public QObject
{
    Q_OBJECT
public:
    // Requests acknowledged and waiting for execution at most (with the slow fault).
    static constexpr int MaxQueued = 16;

    using Executor = std::function<Reply(const QByteArray &name, const QList<QByteArray> &args)>;

    WireSession(const QString &peer, Executor executor, FaultSwitches &faults, TrafficLog &log,
                QObject *parent = nullptr);

    void receive(const QByteArray &bytes);
    // Forgets a half-received frame (the line carried noise).
    void resetInput();
    QString peer() const { return m_peer; }

Q_SIGNALS:
    void output(const QByteArray &bytes);

private:
    struct Request
    {
        char seq;
        QList<QByteArray> fields;
    };
    void receiveBytes(const QByteArray &bytes);
    void onEvent(const Wire::FrameDecoder::Event &event, const QByteArray &raw);
    void processNext();
    void answer(const Request &request);
    void send(const QByteArray &bytes, const QString &note = {});

    QString m_peer;
    Executor m_executor;
    FaultSwitches &m_faults;
    TrafficLog &m_log;
    Wire::FrameDecoder m_decoder;
    QByteArray m_raw;     // bytes of the event being decoded, for the log
    QList<Request> m_queue;
    bool m_busy = false;
    bool m_collecting = false; // inside receive(): output waits in m_outgoing
    QByteArray m_outgoing;
    QByteArray m_lastResponse;
    char m_lastSeq = 0;
};
