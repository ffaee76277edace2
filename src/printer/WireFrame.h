// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <optional>

// Framing of the printer's wire protocol (docs/protocol.md):
//   STX, SEQ ('0'..'9'), fields separated by FS, ETX, CHK (4 upper-case hex
//   digits: sum mod 65536 of every byte after STX up to and including ETX, as
//   sent). Inside a field each of 02 03 06 10 15 1C goes as DLE, byte + 0x40.
namespace Wire {

constexpr char STX = 0x02;
constexpr char ETX = 0x03;
constexpr char ACK = 0x06;
constexpr char DLE = 0x10;
constexpr char NAK = 0x15;
constexpr char FS = 0x1C;
constexpr int MaxFrameBody = 65536; // bytes between STX and ETX

bool needsEscape(char byte);
QByteArray encodeFrame(char seq, const QList<QByteArray> &fields);
char nextSeq(char seq); // '9' wraps to '0'

// Incremental reader for one direction of a connection. Feed it whatever the
// line delivered; take events off with next(). Bytes outside a frame other
// than ACK and NAK are line noise and are dropped.
class FrameDecoder
{
public:
    enum class Kind { Ack, Nak, Frame, BadFrame };
    struct Event
    {
        Kind kind;
        char seq = 0;              // Frame (and BadFrame, when it was readable)
        QList<QByteArray> fields;  // Frame
    };

    void feed(const QByteArray &bytes);
    void feed(const char *data, qsizetype size);
    std::optional<Event> next();
    // True once an STX was seen and its frame is not complete yet.
    bool inFrame() const { return m_state != State::Idle; }
    void reset();

private:
    enum class State { Idle, Body, Checksum };
    void appendBody(const char *data, qsizetype size);
    void finishFrame();

    State m_state = State::Idle;
    QByteArray m_body;     // after STX up to and including ETX
    unsigned m_checksum = 0; // the hex digits read so far
    int m_checksumDigits = 0;
    bool m_checksumLower = false;
    bool m_overflow = false;
    QList<Event> m_events;
};

} // namespace Wire
