// SPDX-License-Identifier: GPL-3.0-or-later
#include "WireSession.h"

#include "TrafficLog.h"

#include <QTimer>

#include <utility>

WireSession::WireSession(const QString &peer, Executor executor, FaultSwitches &faults, TrafficLog &log,
                         QObject *parent)
    : QObject(parent), m_peer(peer), m_executor(std::move(executor)), m_faults(faults), m_log(log)
{
}

void WireSession::resetInput()
{
    m_decoder.reset();
    m_raw.clear();
}

void WireSession::receive(const QByteArray &bytes)
{
    // What this delivery brings about (ACK, NAK, answers) goes out in one
    // write at the end: the ACK and an answer executed at once then share
    // one packet and wake the client once.
    m_collecting = true;
    receiveBytes(bytes);
    m_collecting = false;
    if (!m_outgoing.isEmpty())
        Q_EMIT output(std::exchange(m_outgoing, QByteArray()));
}

void WireSession::receiveBytes(const QByteArray &bytes)
{
    if (!m_log.isWatched()) {
        m_decoder.feed(bytes);
        while (auto e = m_decoder.next())
            onEvent(*e, {});
        return;
    }
    // With a log, byte by byte, so that each event is logged with its own bytes.
    QByteArray noise;
    for (char c : bytes) {
        if (!m_decoder.inFrame() && c != Wire::STX && c != Wire::ACK && c != Wire::NAK) {
            noise.append(c);
            continue;
        }
        if (!noise.isEmpty()) {
            m_log.bytes(m_peer, TrafficLog::Direction::In, noise, QStringLiteral("noise, dropped"));
            noise.clear();
        }
        if (m_raw.size() <= Wire::MaxFrameBody + 8) // an overlong frame is logged by its start
            m_raw.append(c);
        m_decoder.feed(QByteArray::fromRawData(&c, 1));
        while (auto e = m_decoder.next()) {
            const QByteArray raw = m_raw;
            m_raw = m_decoder.inFrame() ? QByteArray(1, Wire::STX) : QByteArray();
            onEvent(*e, raw);
        }
    }
    if (!noise.isEmpty())
        m_log.bytes(m_peer, TrafficLog::Direction::In, noise, QStringLiteral("noise, dropped"));
}

void WireSession::onEvent(const Wire::FrameDecoder::Event &e, const QByteArray &raw)
{
    using Kind = Wire::FrameDecoder::Kind;
    switch (e.kind) {
    case Kind::Ack:
    case Kind::Nak:
        m_log.bytes(m_peer, TrafficLog::Direction::In, raw, QStringLiteral("unexpected, dropped"));
        return;
    case Kind::BadFrame:
        m_log.bytes(m_peer, TrafficLog::Direction::In, raw, QStringLiteral("malformed"));
        if (m_faults.active(FaultSwitches::Wire::NoAck))
            return;
        send(QByteArray(1, Wire::NAK));
        return;
    case Kind::Frame:
        break;
    }
    m_log.bytes(m_peer, TrafficLog::Direction::In, raw);
    if (m_faults.consume(FaultSwitches::Wire::NoAck)) {
        m_log.event(m_peer, QStringLiteral("fault noack: request ignored"));
        return;
    }
    if (m_faults.consume(FaultSwitches::Wire::Nak)) {
        send(QByteArray(1, Wire::NAK), QStringLiteral("fault nak"));
        return;
    }
    if (m_queue.size() >= MaxQueued) {
        // Requests come faster than a slow printer executes them: the buffer is full.
        send(QByteArray(1, Wire::NAK), QStringLiteral("busy: %1 requests waiting").arg(m_queue.size()));
        return;
    }
    send(QByteArray(1, Wire::ACK));
    if (m_faults.consume(FaultSwitches::Wire::AckOnly)) {
        m_log.event(m_peer, QStringLiteral("fault ackonly: no answer"));
        return;
    }
    m_queue.append({e.seq, e.fields});
    processNext();
}

void WireSession::processNext()
{
    if (m_busy || m_queue.isEmpty())
        return;
    const Request request = m_queue.takeFirst();
    if (m_faults.slowMs <= 0) {
        answer(request);
        processNext();
        return;
    }
    m_busy = true;
    QTimer::singleShot(m_faults.slowMs, this, [this, request] {
        answer(request);
        m_busy = false;
        processNext();
    });
}

void WireSession::answer(const Request &request)
{
    const QByteArray name = request.fields.value(0);
    const Reply reply = m_executor(name, request.fields.mid(1));
    QByteArray frame = Wire::encodeFrame(request.seq, reply.fields());

    if (m_faults.consume(FaultSwitches::Wire::Stale)) {
        const bool usable = !m_lastResponse.isEmpty() && m_lastSeq != request.seq;
        const char staleSeq = request.seq == '0' ? '9' : char(request.seq - 1);
        send(usable ? m_lastResponse : Wire::encodeFrame(staleSeq, {QByteArrayLiteral("0")}),
             QStringLiteral("fault stale: an old answer"));
    }
    m_lastResponse = frame;
    m_lastSeq = request.seq;

    if (m_faults.consume(FaultSwitches::Wire::BadChecksum)) {
        char &last = frame[frame.size() - 1];
        last = last == '0' ? '1' : '0';
        send(frame, QStringLiteral("fault badsum"));
        return;
    }
    if (m_faults.consume(FaultSwitches::Wire::CutAnswer)) {
        send(frame.left(frame.size() / 2), QStringLiteral("fault cut: the rest never comes"));
        return;
    }
    send(frame);
}

void WireSession::send(const QByteArray &bytes, const QString &note)
{
    m_log.bytes(m_peer, TrafficLog::Direction::Out, bytes, note);
    if (m_collecting)
        m_outgoing += bytes;
    else
        Q_EMIT output(bytes);
}
