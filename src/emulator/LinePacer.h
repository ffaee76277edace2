// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QtGlobal>

// One direction of a serial line at its speed. A pseudo-terminal moves bytes
// at once; a printer's port takes a character time for each (start bit, data
// bits, parity, stop bits at the line's speed). Bytes pushed here come out
// with take() only once their last bit would have crossed the line, one
// after the other, as they would from a UART.
//
// Times are nanoseconds on any monotonic clock the caller keeps.
class LinePacer
{
public:
    // 0 lets bytes through at once.
    void setCharacterTime(qint64 ns) { m_charNs = ns; }
    qint64 characterTime() const { return m_charNs; }

    void push(const QByteArray &bytes, qint64 now);
    // The bytes that have crossed the line by now, in order.
    QByteArray take(qint64 now);
    // When take() next has something worth handing on: after a few more
    // characters (so that a caller is not woken for every byte), and never
    // later than the moment the last queued byte is through. -1 when empty.
    qint64 nextWake(qint64 now) const;

    bool isEmpty() const { return m_queue.isEmpty(); }
    qsizetype queued() const { return m_queue.size(); }
    void clear() { m_queue.clear(); }

    // How many characters a wake-up hands on at the least, but for the last:
    // Batch, or as many as cross in BatchNs when more. A UART's FIFO and a
    // USB adapter hand on bytes in bunches too; the last byte of a frame is
    // never held back, so a bunch costs no time, only fewer wake-ups of the
    // two ends (at 115200 baud, one a millisecond instead of one every 4
    // characters).
    static constexpr int Batch = 4;
    static constexpr qint64 BatchNs = 1'000'000;

private:
    QByteArray m_queue;
    qint64 m_firstDone = 0; // when the first queued byte is through
    qint64 m_charNs = 0;
};
