// SPDX-License-Identifier: GPL-3.0-or-later
// Text to number and back under an Italian and the C locale: what is a
// number, rounding of halves to even, the 16- and 32-bit edges, exact money.
#include "settings/Conversions.h"
#include "settings/LocaleValue.h"
#include "settings/RunTimeError.h"

#include <QtTest>
#include <locale.h>
#include <cmath>
#include <limits>

namespace {
QLocale localeNamed(const QString &name)
{
    return name == QLatin1String("it") ? QLocale(QLocale::Italian, QLocale::Italy) : QLocale::c();
}

// The code of the failure that converting text throws, 0 when none.
template <typename F>
int failure(F convert)
{
    try {
        convert();
    } catch (const RunTimeError &error) {
        return error.code();
    }
    return 0;
}
}

class TestConversions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { Conv::setLocaleForTests(QLocale::system()); }

    void isNumeric_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        const QList<std::pair<const char *, bool>> italian = {
            {"1,5", true}, {"1.5", true}, {"1.234,5", true}, {" 12 ", true}, {"\t-3", true}, {"3-", true},
            {"+3", true}, {",5", true}, {"5,", true}, {"1e3", true}, {"1,5E-2", true}, {"-2E+1", true},
            {"", false}, {"   ", false}, {"-", false}, {",", false}, {".", false}, {"-3-", false},
            {"- 5", false}, {"abc", false}, {"12a", false}, {"1E+", false},
            {"1,2,3", false}, {".5", false}, {"5.", false}, {"1..2", false}, {"1,5.3", false}, {"0x10", false},
        };
        for (const auto &[text, numeric] : italian)
            QTest::addRow("it '%s'", text) << "it" << QString::fromLatin1(text) << numeric;
        const QList<std::pair<const char *, bool>> c = {
            {"1.5", true}, {"1,5", true}, {"1,234.5", true}, {"1.2.3", false}, {",5", false},
        };
        for (const auto &[text, numeric] : c)
            QTest::addRow("C '%s'", text) << "C" << QString::fromLatin1(text) << numeric;
    }
    void isNumeric()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        Conv::setLocaleForTests(localeNamed(locale));
        QCOMPARE(Conv::IsNumeric(text), numeric);
        // Whatever the test accepts converts, and whatever it refuses does not.
        QCOMPARE(failure([&] { Conv::ToDouble(text); }), numeric ? 0 : int(RunTimeError::TypeMismatch));
    }

    void toInteger_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected"); // or the failure's code
        QTest::newRow("one and a half") << "1,5" << 2;
        QTest::newRow("a half") << "0,5" << 0;
        QTest::newRow("two and a half") << "2,5" << 2;
        QTest::newRow("minus two and a half") << "-2,5" << -2;
        QTest::newRow("just above a half") << "2,50000000000000000001" << 3;
        QTest::newRow("point groups") << "1.5" << 15;
        QTest::newRow("trailing sign, blanks") << " 7- " << -7;
        QTest::newRow("exponent to a half") << "25E-1" << 2;
        QTest::newRow("top") << "32767" << 32767;
        QTest::newRow("top and a bit") << "32767,4" << 32767;
        QTest::newRow("bottom") << "-32768" << -32768;
        QTest::newRow("bottom and a half") << "-32768,5" << -32768;
        QTest::newRow("top and a half") << "32767,5" << int(RunTimeError::Overflow);
        QTest::newRow("past top") << "32768" << int(RunTimeError::Overflow);
        QTest::newRow("past bottom") << "-32769" << int(RunTimeError::Overflow);
        QTest::newRow("past bottom by a hair") << "-32768,50001" << int(RunTimeError::Overflow);
        QTest::newRow("huge") << "99999999999999999999999" << int(RunTimeError::Overflow);
        QTest::newRow("two to the 64") << "18446744073709551616" << int(RunTimeError::Overflow);
        QTest::newRow("huge exponent") << "1E999999999999" << int(RunTimeError::Overflow);
        QTest::newRow("empty") << "" << int(RunTimeError::TypeMismatch);
        QTest::newRow("word") << "abc" << int(RunTimeError::TypeMismatch);
    }
    void toInteger()
    {
        QFETCH(QString, text);
        QFETCH(int, expected);
        Conv::setLocaleForTests(localeNamed(QStringLiteral("it")));
        const bool fails = expected == RunTimeError::Overflow || expected == RunTimeError::TypeMismatch;
        if (fails)
            QCOMPARE(failure([&] { Conv::ToInteger(text); }), expected);
        else
            QCOMPARE(int(Conv::ToInteger(text)), expected);
    }

    void toLongEdges()
    {
        Conv::setLocaleForTests(QLocale::c());
        QCOMPARE(Conv::ToLong(QStringLiteral("2147483647")), std::numeric_limits<int32_t>::max());
        QCOMPARE(Conv::ToLong(QStringLiteral("-2147483648.5")), std::numeric_limits<int32_t>::min());
        QCOMPARE(Conv::ToLong(QStringLiteral("3.5")), 4);
        QCOMPARE(failure([] { Conv::ToLong(QStringLiteral("2147483647.5")); }), int(RunTimeError::Overflow));
        QCOMPARE(failure([] { Conv::ToLong(QStringLiteral("-2147483649")); }), int(RunTimeError::Overflow));
    }

    void fromDoubleHalvesToEven()
    {
        QCOMPARE(Conv::ToInteger(0.5), int16_t(0));
        QCOMPARE(Conv::ToInteger(1.5), int16_t(2));
        QCOMPARE(Conv::ToInteger(2.5), int16_t(2));
        QCOMPARE(Conv::ToInteger(-2.5), int16_t(-2));
        QCOMPARE(Conv::ToInteger(-32768.5), int16_t(-32768));
        QCOMPARE(failure([] { Conv::ToInteger(32767.5); }), int(RunTimeError::Overflow));
        QCOMPARE(failure([] { Conv::ToInteger(std::nan("")); }), int(RunTimeError::Overflow));
        QCOMPARE(Conv::ToLong(-2147483648.5), std::numeric_limits<int32_t>::min());
        QCOMPARE(failure([] { Conv::ToLong(2147483647.5); }), int(RunTimeError::Overflow));
    }

    void currencyIsExact()
    {
        Conv::setLocaleForTests(localeNamed(QStringLiteral("it")));
        auto scaled = [](const char *text) { return Conv::ToCurrency(QString::fromLatin1(text)).scaled(); };
        QCOMPARE(scaled("12,5"), 125000);
        QCOMPARE(scaled("1,23456"), 12346);
        QCOMPARE(scaled("0,00005"), 0);  // halves of the fourth decimal to even
        QCOMPARE(scaled("0,00015"), 2);
        QCOMPARE(scaled("0,00025"), 2);
        QCOMPARE(scaled("-0,00015"), -2);
        QCOMPARE(scaled("1,5E3"), 15000000);
        // Neither end of the range survives a trip through a double.
        QCOMPARE(scaled("922337203685477,5807"), std::numeric_limits<int64_t>::max());
        QCOMPARE(scaled("-922337203685477,5808"), std::numeric_limits<int64_t>::min());
        QCOMPARE(failure([] { Conv::ToCurrency(QStringLiteral("922337203685477,5808")); }), int(RunTimeError::Overflow));
        QCOMPARE(failure([] { Conv::ToCurrency(QStringLiteral("1,5 EUR")); }), int(RunTimeError::TypeMismatch));
    }

    void binaryFloats()
    {
        Conv::setLocaleForTests(localeNamed(QStringLiteral("it")));
        QCOMPARE(Conv::ToDouble(QStringLiteral("1,5")), 1.5);
        QCOMPARE(Conv::ToSingle(QStringLiteral("0,1")), 0.1f);
        QCOMPARE(Conv::ToSingle(QStringLiteral("22,5")), 22.5f);
        QCOMPARE(Conv::ToDouble(QStringLiteral("1E-400")), 0.0);
        QCOMPARE(failure([] { Conv::ToDouble(QStringLiteral("1E400")); }), int(RunTimeError::Overflow));
        QCOMPARE(Conv::ToSingle(QStringLiteral("3,4E38")), 3.4e38f);
        QCOMPARE(failure([] { Conv::ToSingle(QStringLiteral("3,5E38")); }), int(RunTimeError::Overflow));
    }

    void text()
    {
        Conv::setLocaleForTests(localeNamed(QStringLiteral("it")));
        QCOMPARE(Conv::Text(22.5f), QStringLiteral("22,5"));
        QCOMPARE(Conv::Text(0.1f), QStringLiteral("0,1"));
        QCOMPARE(Conv::Text(0.1 + 0.2), QStringLiteral("0,3"));
        QCOMPARE(Conv::Text(1.0 / 3), QStringLiteral("0,333333333333333"));
        QCOMPARE(Conv::Text(1e20), QStringLiteral("1E+20"));
        QCOMPARE(Conv::Text(-0.0), QStringLiteral("0"));
        QCOMPARE(Conv::Text(1234567) + Conv::Text(-1), QStringLiteral("1234567-1"));
        QCOMPARE(Conv::Text(Currency::fromScaled(15000)), QStringLiteral("1,5"));
        // What Text writes, the conversions read back under the same locale.
        QCOMPARE(Conv::ToCurrency(Conv::Text(Currency::fromScaled(-12345678901))).scaled(), -12345678901);
        QCOMPARE(Conv::ToSingle(Conv::Text(12.34f)), 12.34f);

        Conv::setLocaleForTests(QLocale::c());
        QCOMPARE(Conv::Text(22.5f), QStringLiteral("22.5"));
        QCOMPARE(Conv::Text(Currency::fromScaled(15000)), QStringLiteral("1.5"));
    }

    void monetarySeparator()
    {
        Conv::setLocaleForTests(localeNamed(QStringLiteral("it")));
        QCOMPARE(GetLocaleValue(LOCALE_SMONDECIMALSEP), QStringLiteral(","));
        QCOMPARE(GetLocaleValue(14), QString());
        Conv::setLocaleForTests(QLocale::c());
        QCOMPARE(GetLocaleValue(LOCALE_SMONDECIMALSEP), QStringLiteral("."));
        // A locale whose money has a separator other than its numbers'.
        const locale_t probe = newlocale(LC_MONETARY_MASK, "ru_UA.UTF-8", locale_t(nullptr));
        if (!probe)
            QSKIP("ru_UA.UTF-8 is not installed (tools/test.sh generates it)");
        freelocale(probe);
        Conv::setLocaleForTests(QLocale(QLocale::Russian, QLocale::Ukraine));
        QCOMPARE(Conv::locale().decimalPoint(), QStringLiteral(","));
        QCOMPARE(GetLocaleValue(LOCALE_SMONDECIMALSEP), QStringLiteral("."));
    }
};

QTEST_GUILESS_MAIN(TestConversions)
#include "tst_conversions.moc"
