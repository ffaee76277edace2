// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <compare>
#include <cstdint>
#include <optional>

// Money as the printer control carries it: a signed 64-bit integer holding
// the amount times 10000 (four decimals, exact). 1,50 is stored as 15000.
class Currency
{
public:
    static constexpr int64_t Scale = 10000;

    constexpr Currency() = default;
    static constexpr Currency fromScaled(int64_t scaled) { Currency c; c.m_scaled = scaled; return c; }
    static constexpr Currency fromUnits(int64_t units) { return fromScaled(units * Scale); }

    constexpr int64_t scaled() const { return m_scaled; }
    double toDouble() const { return double(m_scaled) / double(Scale); }

    // Nearest representable amount; halves go to even, as the control rounds.
    // Empty when the value lies outside the 64-bit range.
    static std::optional<Currency> fromDouble(double value);

    // Exact decimal text with the given decimal separator, without trailing
    // zeros in the fraction: 15000 -> "1,5", 10000 -> "1", -5 -> "-0,0005".
    QString toText(QChar decimalSeparator) const;

    // Exact parse of plain decimal text ("-12.3456", "7"): an optional sign,
    // digits, an optional separator with up to four more digits. Anything
    // else, or an amount outside the range, gives nothing.
    static std::optional<Currency> fromText(const QString &text, QChar decimalSeparator);

    constexpr auto operator<=>(const Currency &) const = default;
    constexpr Currency operator+(Currency o) const { return fromScaled(m_scaled + o.m_scaled); }
    constexpr Currency operator-(Currency o) const { return fromScaled(m_scaled - o.m_scaled); }
    constexpr Currency operator-() const { return fromScaled(-m_scaled); }

private:
    int64_t m_scaled = 0;
};
