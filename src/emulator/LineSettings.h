// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>

struct termios;

// Serial line settings as "speed,parity,data bits,stop bits" ("9600,n,8,1"),
// and as a terminal holds them.
struct LineSettings
{
    int speed = 9600;
    QChar parity = QLatin1Char('n'); // n e o m s
    int dataBits = 8;                 // 5..8
    QString stopBits = QStringLiteral("1"); // 1, 1.5, 2

    static std::optional<LineSettings> parse(const QString &text);
    QString text() const;

    // What a terminal is set to; nothing when its speed is not a standard one.
    static std::optional<LineSettings> fromTermios(const termios &t);
    // Puts these settings on a terminal in raw mode.
    bool applyTo(termios &t) const;

    // Whether a printer at these settings hears a program whose terminal is
    // at the other ones. On a Linux pseudo-terminal the kernel keeps only the
    // speed and the stop bits (it forces 8 data bits, no parity), so only
    // these two can be compared there.
    bool hears(const LineSettings &terminal) const;

    // Bits one character takes on the line: start, data, parity, stop.
    double bitsPerCharacter() const;
    // Nanoseconds one character takes at this speed.
    qint64 characterTimeNs() const;

    bool operator==(const LineSettings &) const = default;
};
