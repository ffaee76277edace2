#include "WireFrame.h"

namespace Wire {

bool needsEscape(char byte)
{
    return byte == STX || byte == ETX || byte == ACK || byte == DLE || byte == NAK || byte == FS;
}

QByteArray escapeField(const QByteArray &field)
{
    QByteArray out;
    out.reserve(field.size() + 8);
    for (char c : field) {
        if (needsEscape(c)) {
            out.append(DLE);
            out.append(char(c + 0x40));
        } else {
            out.append(c);
        }
    }
    return out;
}

static QByteArray checksumText(const QByteArray &body)
{
    unsigned sum = 0;
    for (char c : body)
        sum += static_cast<unsigned char>(c);
    return QByteArray::number(sum & 0xFFFF, 16).toUpper().rightJustified(4, '0');
}

QByteArray encodeFrame(char seq, const QList<QByteArray> &fields)
{
    QByteArray body;
    body.append(seq);
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            body.append(FS);
        body.append(escapeField(fields[i]));
    }
    body.append(ETX);
    QByteArray frame;
    frame.reserve(body.size() + 5);
    frame.append(STX);
    frame.append(body);
    frame.append(checksumText(body));
    return frame;
}

static bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
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
    m_body.clear();
    m_checksum.clear();
    m_overflow = false;
    m_events.clear();
}

void FrameDecoder::feed(const QByteArray &bytes)
{
    for (char c : bytes) {
        switch (m_state) {
        case State::Idle:
            if (c == STX) {
                m_state = State::Body;
                m_body.clear();
                m_overflow = false;
            } else if (c == ACK) {
                m_events.append({Kind::Ack, 0, {}});
            } else if (c == NAK) {
                m_events.append({Kind::Nak, 0, {}});
            }
            break;
        case State::Body:
            if (c == STX) {
                // A bare STX cannot stand inside a frame: the old one was cut.
                m_events.append({Kind::BadFrame, readableSeq(m_body), {}});
                m_body.clear();
                m_overflow = false;
            } else {
                if (m_body.size() <= MaxFrameBody)
                    m_body.append(c);
                else
                    m_overflow = true;
                if (c == ETX) {
                    m_state = State::Checksum;
                    m_checksum.clear();
                }
            }
            break;
        case State::Checksum:
            if (!isHexDigit(c)) {
                // The frame was cut in its checksum; the byte may open the next one.
                m_events.append({Kind::BadFrame, readableSeq(m_body), {}});
                m_state = State::Idle;
                feed(QByteArray(1, c));
                break;
            }
            m_checksum.append(c);
            if (m_checksum.size() == 4)
                finishFrame();
            break;
        }
    }
}

void FrameDecoder::finishFrame()
{
    m_state = State::Idle;
    Event bad{Kind::BadFrame, readableSeq(m_body), {}};
    // The body holds SEQ ... ETX; SEQ and ETX count towards the limit too.
    if (m_overflow || m_body.size() > MaxFrameBody || m_body.size() < 2) {
        m_events.append(bad);
        return;
    }
    const char seq = m_body.at(0);
    if (seq < '0' || seq > '9' || checksumText(m_body) != m_checksum) {
        m_events.append(bad);
        return;
    }
    QList<QByteArray> fields;
    QByteArray field;
    for (qsizetype i = 1; i < m_body.size() - 1; ++i) {
        const char c = m_body.at(i);
        if (c == FS) {
            fields.append(field);
            field.clear();
        } else if (c == DLE) {
            if (i + 1 >= m_body.size() - 1) {
                m_events.append(bad);
                return;
            }
            const char escaped = char(m_body.at(++i) - 0x40);
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
    }
    fields.append(field);
    m_events.append({Kind::Frame, seq, fields});
}

std::optional<FrameDecoder::Event> FrameDecoder::next()
{
    if (m_events.isEmpty())
        return std::nullopt;
    return m_events.takeFirst();
}

} // namespace Wire
