// SPDX-License-Identifier: GPL-3.0-or-later
#include "Conversions.h"

#include "RunTimeError.h"

#include <QByteArray>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace {

std::optional<QLocale> &localeOverride()
{
    static std::optional<QLocale> locale;
    return locale;
}

QChar decimalSeparator()
{
    const QString point = Conv::locale().decimalPoint();
    return point.isEmpty() ? QLatin1Char('.') : point.front();
}

QChar groupSeparator()
{
    const QString group = Conv::locale().groupSeparator();
    return group.isEmpty() ? QChar() : group.front();
}

// A number read from text, exactly: digits * 10^exponent. The digits carry
// no leading or trailing zeros, so an empty string is zero.
struct DecimalNumber
{
    bool negative = false;
    QByteArray digits;
    int64_t exponent = 0;
};

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r')
        || c == QLatin1Char('\n') || c == QLatin1Char('\v') || c == QLatin1Char('\f');
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

// What counts as a number, in the locale's notation: blanks around it; one
// sign, before or after the figures ("-5", "5-"); digits, with the group
// separator standing between two digits of the whole part; one decimal
// separator, with digits on at least one side; an exponent E or e with an
// optional sign and at least one digit.
//
// Group separators are only skipped, not checked for groups of three: under
// an Italian locale "1.5" is fifteen, not one and a half, and "1.2.3" is 123.
// A point typed for the decimal comma thus changes the number without a
// word: the locale's rule, kept as it is.
std::optional<DecimalNumber> parse(const QString &text)
{
    const QChar decimal = decimalSeparator();
    const QChar group = groupSeparator();
    const qsizetype n = text.size();
    qsizetype i = 0;
    auto at = [&](qsizetype k) { return k < n ? text[k] : QChar(); };

    while (i < n && isBlank(text[i]))
        ++i;

    DecimalNumber number;
    bool leadingSign = false;
    if (isSign(at(i))) {
        number.negative = text[i] == QLatin1Char('-');
        leadingSign = true;
        ++i;
    }

    QByteArray digits;
    int64_t fractionDigits = 0;
    bool seenDecimal = false;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (isDigit(c)) {
            digits.append(char(c.unicode()));
            if (seenDecimal)
                ++fractionDigits;
        } else if (c == decimal && !seenDecimal) {
            seenDecimal = true;
        } else if (c == group && !group.isNull() && !seenDecimal && i > 0 && isDigit(text[i - 1])
                   && isDigit(at(i + 1))) {
            continue;
        } else {
            break;
        }
    }
    if (digits.isEmpty())
        return std::nullopt;

    int64_t exponent = 0;
    if (at(i) == QLatin1Char('E') || at(i) == QLatin1Char('e')) {
        ++i;
        bool negativeExponent = false;
        if (isSign(at(i))) {
            negativeExponent = text[i] == QLatin1Char('-');
            ++i;
        }
        if (!isDigit(at(i)))
            return std::nullopt;
        for (; i < n && isDigit(text[i]); ++i) {
            // Beyond any range that matters; keep counting without overflowing.
            if (exponent < 1'000'000'000)
                exponent = exponent * 10 + (text[i].unicode() - '0');
        }
        if (negativeExponent)
            exponent = -exponent;
    }

    if (!leadingSign && isSign(at(i))) {
        number.negative = text[i] == QLatin1Char('-');
        ++i;
    }
    while (i < n && isBlank(text[i]))
        ++i;
    if (i != n)
        return std::nullopt;

    qsizetype first = 0;
    while (first < digits.size() && digits[first] == '0')
        ++first;
    qsizetype last = digits.size();
    int64_t trailingZeros = 0;
    while (last > first && digits[last - 1] == '0') {
        --last;
        ++trailingZeros;
    }
    number.digits = digits.mid(first, last - first);
    number.exponent = exponent - fractionDigits + trailingZeros;
    return number;
}

DecimalNumber parseOrMismatch(const QString &text)
{
    std::optional<DecimalNumber> number = parse(text);
    if (!number)
        throw RunTimeError::typeMismatch();
    return *number;
}

// The number times 10^scale, rounded to a whole number with halves to even,
// as a magnitude; nothing when it does not fit in 64 bits.
std::optional<uint64_t> roundedMagnitude(const DecimalNumber &number, int scale)
{
    const char *digits = number.digits.constData();
    const int64_t length = number.digits.size();
    if (length == 0)
        return uint64_t(0);
    const int64_t exponent = number.exponent + scale;
    const int64_t wholeDigits = length + exponent; // digits before the decimal point
    if (wholeDigits > 19)
        return std::nullopt; // at least 10^19
    if (wholeDigits <= 0) {
        // Below one: one half or more only when the first digit is right
        // after the point. Exactly one half rounds to the even zero.
        if (wholeDigits < 0 || digits[0] < '5' || (digits[0] == '5' && length == 1))
            return uint64_t(0);
        return uint64_t(1);
    }

    uint64_t whole = 0;
    for (int64_t k = 0; k < std::min(length, wholeDigits); ++k)
        whole = whole * 10 + uint64_t(digits[k] - '0');
    for (int64_t k = length; k < wholeDigits; ++k)
        whole *= 10;
    if (wholeDigits < length) {
        // The digits carry no trailing zeros: anything after a 5 makes more than a half.
        const char next = digits[wholeDigits];
        const bool more = wholeDigits + 1 < length;
        if (next > '5' || (next == '5' && (more || (whole & 1))))
            ++whole; // at most 9999999999999999999 + 1: still fits
    }
    return whole;
}

int64_t roundedInRange(const QString &text, int scale, int64_t lowest, int64_t highest)
{
    const DecimalNumber number = parseOrMismatch(text);
    const std::optional<uint64_t> magnitude = roundedMagnitude(number, scale);
    if (!magnitude)
        throw RunTimeError::overflow();
    const uint64_t limit = number.negative ? uint64_t(0) - uint64_t(lowest) : uint64_t(highest);
    if (*magnitude > limit)
        throw RunTimeError::overflow();
    return number.negative ? int64_t(uint64_t(0) - *magnitude) : int64_t(*magnitude);
}

// Correctly rounded binary value of the number; overflow beyond the type's
// range, zero below its smallest value.
template <typename Float>
Float toBinary(const DecimalNumber &number)
{
    if (number.digits.isEmpty())
        return Float(0);
    const QByteArray text = number.digits + 'e' + QByteArray::number(qlonglong(number.exponent));
    Float value = 0;
    const std::errc error = std::from_chars(text.constData(), text.constData() + text.size(), value).ec;
    if (error == std::errc::result_out_of_range) {
        if (number.digits.size() + number.exponent > 0)
            throw RunTimeError::overflow();
        value = 0;
    } else if (error != std::errc() || !std::isfinite(value)) {
        throw RunTimeError::overflow();
    }
    return number.negative ? -value : value;
}

// Text of a binary number with the given significant digits, trailing zeros
// dropped, in the locale's decimal notation.
QString floatText(double value, int precision)
{
    if (value == 0)
        return QStringLiteral("0"); // also for -0
    QString text = QString::number(value, 'G', precision);
    text.replace(QLatin1Char('.'), decimalSeparator());
    return text;
}

template <typename Int>
Int roundDouble(double value)
{
    const double rounded = std::nearbyint(value); // the default mode: halves to even
    if (!(rounded >= double(std::numeric_limits<Int>::min()) && rounded <= double(std::numeric_limits<Int>::max())))
        throw RunTimeError::overflow(); // also NaN
    return Int(rounded);
}

} // namespace

namespace Conv {

QLocale locale()
{
    return localeOverride() ? *localeOverride() : QLocale::system();
}

void setLocaleForTests(const QLocale &locale)
{
    localeOverride() = locale;
}

bool IsNumeric(const QString &text)
{
    return parse(text).has_value();
}

double ToDouble(const QString &text)
{
    return toBinary<double>(parseOrMismatch(text));
}

int16_t ToInteger(const QString &text)
{
    return int16_t(roundedInRange(text, 0, std::numeric_limits<int16_t>::min(), std::numeric_limits<int16_t>::max()));
}

int32_t ToLong(const QString &text)
{
    return int32_t(roundedInRange(text, 0, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

float ToSingle(const QString &text)
{
    return toBinary<float>(parseOrMismatch(text));
}

// Exact: the decimal text is scaled by 10^4 without passing through a double,
// and a fifth decimal or more rounds halves to even, as the control does.
Currency ToCurrency(const QString &text)
{
    return Currency::fromScaled(roundedInRange(text, 4, std::numeric_limits<int64_t>::min(),
                                               std::numeric_limits<int64_t>::max()));
}

int16_t ToInteger(double value)
{
    return roundDouble<int16_t>(value);
}

int32_t ToLong(double value)
{
    return roundDouble<int32_t>(value);
}

QString Text(int64_t value)
{
    return QString::number(value);
}

QString Text(double value)
{
    return floatText(value, 15);
}

QString Text(float value)
{
    return floatText(double(value), 7);
}

QString Text(Currency value)
{
    return value.toText(decimalSeparator());
}

} // namespace Conv
