// SPDX-License-Identifier: GPL-3.0-or-later
#include "Currency.h"

#include <algorithm>
#include <cmath>
#include <limits>

std::optional<Currency> Currency::fromDouble(double value)
{
    if (!std::isfinite(value))
        return std::nullopt;
    // A double seldom holds a decimal half exactly (0.00015 is just below
    // it); a value within a hair of a half counts as the half, which then
    // goes to the even neighbour.
    const double raw = value * double(Scale);
    const double floorPart = std::floor(raw);
    double scaled = std::nearbyint(raw); // default rounding: halves to even
    if (std::fabs(raw - (floorPart + 0.5)) <= 1e-9 * std::max(1.0, std::fabs(raw)))
        scaled = std::fmod(floorPart, 2.0) == 0.0 ? floorPart : floorPart + 1.0;
    // 2^63 is exactly representable; anything at or beyond it does not fit.
    if (scaled >= 9223372036854775808.0 || scaled < -9223372036854775808.0)
        return std::nullopt;
    return fromScaled(static_cast<int64_t>(scaled));
}

QString Currency::toText(QChar decimalSeparator) const
{
    const bool negative = m_scaled < 0;
    // Work on the magnitude as unsigned so that the lowest value has one too.
    const uint64_t magnitude = negative ? uint64_t(0) - uint64_t(m_scaled) : uint64_t(m_scaled);
    const uint64_t units = magnitude / uint64_t(Scale);
    uint64_t fraction = magnitude % uint64_t(Scale);
    QString text = negative ? QStringLiteral("-") : QString();
    text += QString::number(units);
    if (fraction != 0) {
        QString digits = QString::number(fraction).rightJustified(4, QLatin1Char('0'));
        while (digits.endsWith(QLatin1Char('0')))
            digits.chop(1);
        text += decimalSeparator;
        text += digits;
    }
    return text;
}

std::optional<Currency> Currency::fromText(const QString &text, QChar decimalSeparator)
{
    qsizetype i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+'))) {
        negative = text[i] == QLatin1Char('-');
        ++i;
    }
    uint64_t units = 0;
    int intDigits = 0;
    while (i < text.size() && text[i].isDigit() && text[i].unicode() < 128) {
        if (units > (std::numeric_limits<uint64_t>::max() - 9) / 10)
            return std::nullopt;
        units = units * 10 + uint64_t(text[i].unicode() - '0');
        ++intDigits;
        ++i;
    }
    uint64_t fraction = 0;
    int fracDigits = 0;
    if (i < text.size() && text[i] == decimalSeparator) {
        ++i;
        while (i < text.size() && text[i].isDigit() && text[i].unicode() < 128) {
            if (fracDigits == 4)
                return std::nullopt;
            fraction = fraction * 10 + uint64_t(text[i].unicode() - '0');
            ++fracDigits;
            ++i;
        }
    }
    if (i != text.size() || intDigits + fracDigits == 0)
        return std::nullopt;
    for (int d = fracDigits; d < 4; ++d)
        fraction *= 10;
    const uint64_t limit = negative ? uint64_t(std::numeric_limits<int64_t>::max()) + 1
                                    : uint64_t(std::numeric_limits<int64_t>::max());
    if (units > limit / uint64_t(Scale))
        return std::nullopt;
    const uint64_t magnitude = units * uint64_t(Scale) + fraction;
    if (magnitude > limit)
        return std::nullopt;
    const int64_t scaled = negative ? int64_t(uint64_t(0) - magnitude) : int64_t(magnitude);
    return fromScaled(scaled);
}
