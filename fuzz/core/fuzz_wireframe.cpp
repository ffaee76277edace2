// SPDX-License-Identifier: GPL-3.0-or-later
// The printer control's reading side: the frame decoder fed whatever a line
// may carry, in arbitrary pieces, and the response parser and value readers
// on every frame it accepts.
#include "FuzzCheck.h"
#include "settings/Cp1252.h"
#include "printer/WireFrame.h"
#include "printer/WireResponse.h"
#include "printer/WireValue.h"

#include <cstdint>

namespace {

using Wire::FrameDecoder;

QList<FrameDecoder::Event> drain(FrameDecoder &decoder)
{
    QList<FrameDecoder::Event> events;
    while (auto e = decoder.next())
        events.append(*e);
    return events;
}

bool sameEvents(const QList<FrameDecoder::Event> &a, const QList<FrameDecoder::Event> &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i].kind != b[i].kind || a[i].seq != b[i].seq || a[i].fields != b[i].fields)
            return false;
    }
    return true;
}

void readValues(const QList<QByteArray> &fields)
{
    const std::optional<Wire::Response> response = Wire::parseResponse(fields);
    if (!response)
        return;
    FUZZ_CHECK(response->result == 0 || response->result == -1);
    for (const auto &[name, value] : response->properties) {
        FUZZ_CHECK(!name.isEmpty());
        (void)WireValue::toInteger(value);
        (void)WireValue::toSingle(value);
        (void)WireValue::toCurrency(value);
        (void)WireValue::toDate(value);
        FUZZ_CHECK(WireValue::from(value) == Cp1252::encode(value));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // The first byte chooses how the rest is cut into pieces, as a socket
    // might deliver it.
    if (size == 0)
        return 0;
    const unsigned cut = data[0] % 7 + 1;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));

    FrameDecoder whole;
    whole.feed(bytes);
    const QList<FrameDecoder::Event> events = drain(whole);

    FrameDecoder pieces;
    QList<FrameDecoder::Event> piecewise;
    for (qsizetype at = 0; at < bytes.size(); at += cut) {
        pieces.feed(bytes.mid(at, cut));
        piecewise += drain(pieces);
    }
    FUZZ_CHECK(sameEvents(events, piecewise));
    FUZZ_CHECK(whole.inFrame() == pieces.inFrame());

    for (const FrameDecoder::Event &e : events) {
        if (e.kind != FrameDecoder::Kind::Frame)
            continue;
        FUZZ_CHECK(e.seq >= '0' && e.seq <= '9');
        // What the decoder accepts, the encoder writes back to the same frame.
        FrameDecoder again;
        again.feed(Wire::encodeFrame(e.seq, e.fields));
        const QList<FrameDecoder::Event> back = drain(again);
        FUZZ_CHECK(back.size() == 1 && back[0].kind == FrameDecoder::Kind::Frame && back[0].fields == e.fields);
        readValues(e.fields);
        for (const QByteArray &field : e.fields)
            FUZZ_CHECK(Cp1252::encode(Cp1252::decode(field)) == field);
    }
    return 0;
}
