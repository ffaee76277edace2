// SPDX-License-Identifier: GPL-3.0-or-later
#include "Cp1252.h"

namespace {
// Code points of the bytes 80..9F; the others are Latin-1.
constexpr char16_t kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
}

QByteArray Cp1252::encode(const QString &text)
{
    QByteArray out(text.size(), Qt::Uninitialized);
    char *d = out.data();
    for (QChar ch : text) {
        const char16_t u = ch.unicode();
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            *d++ = char(u);
            continue;
        }
        char byte = '?';
        for (int i = 0; i < 32; ++i) {
            if (kHigh[i] == u) {
                byte = char(0x80 + i);
                break;
            }
        }
        *d++ = byte;
    }
    return out;
}

QString Cp1252::decode(const QByteArray &bytes)
{
    return decode(bytes.constData(), bytes.size());
}

QString Cp1252::decode(const char *bytes, qsizetype size)
{
    QString out(size, Qt::Uninitialized);
    QChar *d = out.data();
    for (qsizetype i = 0; i < size; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        d[i] = b >= 0x80 && b < 0xA0 ? QChar(kHigh[b - 0x80]) : QChar(char16_t(b));
    }
    return out;
}
