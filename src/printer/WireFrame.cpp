// SPDX-License-Identifier: GPL-3.0-or-later
#include "WireFrame.h"

namespace Wire {

bool needsEscape(char byte)
{
    return byte == STX || byte == ETX || byte == ACK || byte == DLE || byte == NAK || byte == FS;
}

static unsigned checksum(const char *begin, const char *end)
{
    unsigned sum = 0;
    for (const char *p = begin; p != end; ++p)
        sum += static_cast<unsigned char>(*p);
    return sum & 0xFFFF;
}

QByteArray encodeFrame(char seq, const QList<QByteArray> &fields)
{
    // One buffer, written in place: this runs once per command on both ends
    // of the line, so it allocates once.
    qsizetype size = 1 + 1 + 1 + 4; // STX SEQ ... ETX CHK
    for (const QByteArray &f : fields)
        size += 2 * f.size() + 1;
    QByteArray frame;
    frame.reserve(size);
    frame.append(STX);
    frame.append(seq);
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            frame.append(FS);
        for (char c : fields[i]) {
            if (needsEscape(c)) {
                frame.append(DLE);
                frame.append(char(c + 0x40));
            } else {
                frame.append(c);
            }
        }
    }
    frame.append(ETX);
    const unsigned sum = checksum(frame.constData() + 1, frame.constData() + frame.size());
    static constexpr char hex[] = "0123456789ABCDEF";
    for (int shift = 12; shift >= 0; shift -= 4)
        frame.append(hex[(sum >> shift) & 0xF]);
    return frame;
}

static int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// The SEQ of a (possibly broken) body, or 0 when it has none.
static char readableSeq(const QByteArray &body)
{
    return !body.isEmpty() && body.at(0) >= '0' && body.at(0) <= '9' ? body.at(0) : char(0);
}

char nextSeq(char seq)
{
    return seq >= '9' || seq < '0' ? '0' : char(seq + 1);
}

void FrameDecoder::reset()
{
    m_state = State::Idle;
    m_body.truncate(0); // keeps its room for the next frame
    m_checksum = 0;
    m_checksumDigits = 0;
    m_checksumLower = false;
    m_overflow = false;
    m_events.clear();
}

void FrameDecoder::feed(const QByteArray &bytes)
{
    feed(bytes.constData(), bytes.size());
}

void FrameDecoder::feed(const char *data, qsizetype size)
{
    const char *p = data;
    const char *const end = data + size;
    while (p != end) {
        switch (m_state) {
        case State::Idle: {
            const char c = *p++;
            if (c == STX) {
                m_state = State::Body;
                m_body.truncate(0);
                m_overflow = false;
            } else if (c == ACK) {
                m_events.append({Kind::Ack, 0, {}});
            } else if (c == NAK) {
                m_events.append({Kind::Nak, 0, {}});
            }
            break;
        }
        case State::Body: {
            // The body up to the next STX or ETX goes in at once.
            const char *stop = p;
            while (stop != end && *stop != STX && *stop != ETX)
                ++stop;
            appendBody(p, stop - p);
            p = stop;
            if (p == end)
                break;
            if (*p == STX) {
                // A bare STX cannot stand inside a frame: the old one was cut.
                m_events.append({Kind::BadFrame, readableSeq(m_body), {}});
                m_body.truncate(0);
                m_overflow = false;
                ++p;
            } else {
                appendBody(p, 1);
                ++p;
                m_state = State::Checksum;
                m_checksum = 0;
                m_checksumDigits = 0;
                m_checksumLower = false;
            }
            break;
        }
        case State::Checksum: {
            const int digit = hexValue(*p);
            if (digit < 0) {
                // The frame was cut in its checksum; the byte may open the next one.
                m_events.append({Kind::BadFrame, readableSeq(m_body), {}});
                m_state = State::Idle;
                break; // the same byte again, now outside a frame
            }
            ++p;
            // Digits are sent upper-case: a lower-case one reads as a wrong checksum.
            if (*(p - 1) >= 'a')
                m_checksumLower = true;
            m_checksum = (m_checksum << 4) | unsigned(digit);
            if (++m_checksumDigits == 4)
                finishFrame();
            break;
        }
        }
    }
}

void FrameDecoder::appendBody(const char *data, qsizetype size)
{
    const qsizetype room = MaxFrameBody + 1 - m_body.size();
    if (size > room) {
        m_overflow = true;
        size = qMax<qsizetype>(0, room);
    }
    m_body.append(data, size);
}

void FrameDecoder::finishFrame()
{
    m_state = State::Idle;
    const Event bad{Kind::BadFrame, readableSeq(m_body), {}};
    // The body holds SEQ ... ETX; SEQ and ETX count towards the limit too.
    if (m_overflow || m_body.size() > MaxFrameBody || m_body.size() < 2) {
        m_events.append(bad);
        return;
    }
    const char *const body = m_body.constData();
    const qsizetype last = m_body.size() - 1; // the ETX
    const char seq = body[0];
    if (seq < '0' || seq > '9' || m_checksumLower || checksum(body, body + m_body.size()) != m_checksum) {
        m_events.append(bad);
        return;
    }
    QList<QByteArray> fields;
    qsizetype start = 1;
    for (;;) {
        // A field without DLE is taken as it stands, in one copy.
        qsizetype i = start;
        while (i < last && !needsEscape(body[i])) // FS and DLE among them
            ++i;
        QByteArray field(body + start, i - start);
        while (i < last && body[i] != FS) {
            const char c = body[i];
            if (c == DLE) {
                if (i + 1 >= last) {
                    m_events.append(bad);
                    return;
                }
                const char escaped = char(body[++i] - 0x40);
                if (!needsEscape(escaped)) {
                    m_events.append(bad);
                    return;
                }
                field.append(escaped);
            } else if (needsEscape(c)) {
                m_events.append(bad); // an unescaped control byte inside the body
                return;
            } else {
                field.append(c);
            }
            ++i;
        }
        fields.append(field);
        if (i >= last)
            break;
        start = i + 1; // past the FS
    }
    m_events.append({Kind::Frame, seq, std::move(fields)});
}

std::optional<FrameDecoder::Event> FrameDecoder::next()
{
    if (m_events.isEmpty())
        return std::nullopt;
    return m_events.takeFirst();
}

} // namespace Wire
