// SPDX-License-Identifier: GPL-3.0-or-later
// Text to number under the Italian and the English locale: the numeric
// test, Integer, Long, Single, Double and Currency. A RunTimeError (type
// mismatch, overflow) is the expected end of a bad text; any other outcome,
// or a result that does not read back, is a fault.
#include "FuzzCheck.h"
#include "settings/Conversions.h"
#include "settings/RunTimeError.h"

#include <cmath>
#include <cstdint>
#include <optional>

namespace {

template <typename F>
auto convert(F f, const QString &text, bool numeric) -> std::optional<decltype(f(text))>
{
    try {
        return f(text);
    } catch (const RunTimeError &e) {
        // Text the numeric test refuses is a mismatch; text it accepts can only be too big.
        FUZZ_CHECK(e.code() == (numeric ? RunTimeError::Overflow : RunTimeError::TypeMismatch));
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    static const QLocale italian(QLocale::Italian, QLocale::Italy);
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    Conv::setLocaleForTests(data[0] & 1 ? english : italian);
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));

    const bool numeric = Conv::IsNumeric(text);
    const auto d = convert([](const QString &t) { return Conv::ToDouble(t); }, text, numeric);
    const auto i = convert([](const QString &t) { return Conv::ToInteger(t); }, text, numeric);
    const auto l = convert([](const QString &t) { return Conv::ToLong(t); }, text, numeric);
    const auto s = convert([](const QString &t) { return Conv::ToSingle(t); }, text, numeric);
    const auto c = convert([](const QString &t) { return Conv::ToCurrency(t); }, text, numeric);

    // A whole number that fits the narrower type fits the wider one, equal.
    if (i)
        FUZZ_CHECK(l && *l == *i);
    if (l)
        FUZZ_CHECK(c.has_value());
    if (d && s)
        FUZZ_CHECK(std::isfinite(*d) && std::isfinite(*s));

    // What the program writes, it reads back the same.
    if (i)
        FUZZ_CHECK(Conv::ToInteger(Conv::Text(int64_t(*i))) == *i);
    if (l)
        FUZZ_CHECK(Conv::ToLong(Conv::Text(int64_t(*l))) == *l);
    if (c)
        FUZZ_CHECK(Conv::ToCurrency(Conv::Text(*c)) == *c);
    if (d && std::fabs(*d) < 1.7976931348623e308) { // the largest doubles round up past the limit
        const double back = Conv::ToDouble(Conv::Text(*d)); // 15 significant digits
        FUZZ_CHECK(std::fabs(back - *d) <= std::fabs(*d) * 1e-14);
    }
    if (s) {
        const float back = Conv::ToSingle(Conv::Text(*s)); // 7 significant digits
        FUZZ_CHECK(std::fabs(back - *s) <= std::fabs(*s) * 1e-6f);
    }
    if (d) {
        // Rounding a double to an Integer either fits or overflows.
        try {
            (void)Conv::ToInteger(*d);
            (void)Conv::ToLong(*d);
        } catch (const RunTimeError &e) {
            FUZZ_CHECK(e.code() == RunTimeError::Overflow);
        }
    }
    return 0;
}
