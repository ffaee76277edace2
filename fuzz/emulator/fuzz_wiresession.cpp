// SPDX-License-Identifier: GPL-3.0-or-later
// The emulator's side of a connection: whatever a client sends, as raw
// bytes or as well-framed requests of any name and arguments, reaches the
// command dispatch; the printer answers only with well-formed frames and
// control bytes, one response per request it acknowledged.
#include "FuzzCheck.h"
#include "emulator/EmulatorServer.h"
#include "emulator/TrafficLog.h"
#include "emulator/WireSession.h"
#include "printer/WireFrame.h"
#include "printer/WireResponse.h"

#include <cstdint>

namespace {

// Requests as lines; fields separated by '|'.
QByteArray framed(const QByteArray &text)
{
    QByteArray out;
    char seq = '0';
    for (const QByteArray &line : text.split('\n')) {
        out += Wire::encodeFrame(seq, line.split('|'));
        seq = Wire::nextSeq(seq);
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    silenceQtMessages();
    if (size == 0)
        return 0;
    // Bit 0: a traffic log is open (the session then reads byte by byte).
    // Bit 1: the rest is requests to frame, else raw bytes.
    // Bits 2-4: the size of the pieces the transport delivers.
    const uint8_t mode = data[0];
    const QByteArray rest(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    const QByteArray input = mode & 2 ? framed(rest) : rest;
    const qsizetype piece = ((mode >> 2) & 7) * 7 + 1;

    EmulatorConfig config;
    config.tcp = false;
    EmulatorServer server(config);
    FUZZ_CHECK(server.start());

    TrafficLog log;
    if (mode & 1)
        FUZZ_CHECK(log.open(QStringLiteral("/dev/null"), nullptr));

    QByteArray output;
    int acknowledged = 0;
    int answered = 0;
    {
        WireSession session(QStringLiteral("fuzz"),
                            [&server](const QByteArray &name, const QList<QByteArray> &args) {
                                return server.execute(name, args);
                            },
                            server.faults(), log, nullptr);
        QObject::connect(&session, &WireSession::output, [&output](const QByteArray &bytes) { output += bytes; });
        for (qsizetype at = 0; at < input.size(); at += piece)
            session.receive(input.mid(at, piece));
    }

    Wire::FrameDecoder client;
    client.feed(output);
    while (auto e = client.next()) {
        FUZZ_CHECK(e->kind != Wire::FrameDecoder::Kind::BadFrame);
        if (e->kind == Wire::FrameDecoder::Kind::Ack)
            ++acknowledged;
        if (e->kind == Wire::FrameDecoder::Kind::Frame) {
            ++answered;
            FUZZ_CHECK(Wire::parseResponse(e->fields).has_value());
        }
    }
    FUZZ_CHECK(!client.inFrame());
    FUZZ_CHECK(answered == acknowledged);
    return 0;
}
