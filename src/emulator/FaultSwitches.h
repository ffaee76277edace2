// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>

// The faults of the line that the technician can throw, from the console or
// the command line. Each wire fault is off, on for every request, or on for
// the next n requests only.
class FaultSwitches
{
public:
    enum class Wire {
        Nak,         // every well-formed request is answered with NAK (3 of them: result 7)
        NoAck,       // requests are ignored altogether (result 7)
        AckOnly,     // ACK, then nothing (result 8)
        CutAnswer,   // the answer stops in the middle (result 3)
        BadChecksum, // the answer carries a wrong checksum (result 4)
        Stale,       // an old answer of another SEQ comes before the right one
    };
    static constexpr int Always = -1;

    void set(Wire fault, int count); // 0 off, -1 always, n the next n requests
    int remaining(Wire fault) const { return m_count[int(fault)]; }
    bool active(Wire fault) const { return m_count[int(fault)] != 0; }
    // True when the fault applies to this request; counts it down.
    bool consume(Wire fault);

    int slowMs = 0; // delay before each answer (beyond TimeoutOp: result 8)

    void clear();
    QString describe() const;
    static QString name(Wire fault);
    static std::optional<Wire> fromName(const QString &name);

private:
    static constexpr int Count = 6;
    int m_count[Count] = {0, 0, 0, 0, 0, 0};
};
