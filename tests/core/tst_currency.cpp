// SPDX-License-Identifier: GPL-3.0-or-later
// Money is exact: scaled by 10000 and never through binary floating point
// when it comes from text.
#include "settings/Currency.h"
#include "printer/WireValue.h"

#include <QtTest>
#include <limits>

class TestCurrency : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void text_data()
    {
        QTest::addColumn<qint64>("scaled");
        QTest::addColumn<QString>("comma");
        QTest::newRow("unit") << qint64(10000) << "1";
        QTest::newRow("half") << qint64(15000) << "1,5";
        QTest::newRow("tiny") << qint64(-5) << "-0,0005";
        QTest::newRow("zero") << qint64(0) << "0";
        QTest::newRow("cents") << qint64(1234500) << "123,45";
        QTest::newRow("max") << std::numeric_limits<qint64>::max() << "922337203685477,5807";
        QTest::newRow("min") << std::numeric_limits<qint64>::min() << "-922337203685477,5808";
    }
    void text()
    {
        QFETCH(qint64, scaled);
        QFETCH(QString, comma);
        const Currency c = Currency::fromScaled(scaled);
        QCOMPARE(c.toText(QLatin1Char(',')), comma);
        const auto back = Currency::fromText(comma, QLatin1Char(','));
        QVERIFY(back.has_value());
        QCOMPARE(back->scaled(), scaled);
    }

    void rejectedText()
    {
        for (const char *bad : {"", "-", ",", "1,23456", "1.5", "12a", " 1", "922337203685477,5808", "1,,2"})
            QVERIFY2(!Currency::fromText(QString::fromLatin1(bad), QLatin1Char(',')).has_value(), bad);
        QCOMPARE(Currency::fromText(QStringLiteral(",5"), QLatin1Char(','))->scaled(), 5000);
        QCOMPARE(Currency::fromText(QStringLiteral("+7,"), QLatin1Char(','))->scaled(), 70000);
    }

    void fromDoubleRoundsHalvesToEven()
    {
        QCOMPARE(Currency::fromDouble(0.00005)->scaled(), 0); // 0.5 of the last digit
        QCOMPARE(Currency::fromDouble(0.00015)->scaled(), 2);
        QCOMPARE(Currency::fromDouble(12.5)->scaled(), 125000);
        QVERIFY(!Currency::fromDouble(1e300).has_value());
        QVERIFY(!Currency::fromDouble(std::numeric_limits<double>::quiet_NaN()).has_value());
    }

    void wireForms()
    {
        QCOMPARE(WireValue::from(Currency::fromScaled(15000)), QByteArray("15000"));
        QCOMPARE(WireValue::from(22.5f), QByteArray("22.5"));
        QCOMPARE(WireValue::from(0.1f), QByteArray("0.1"));
        QCOMPARE(WireValue::toSingle(QStringLiteral("0.1")), 0.1f);
        QCOMPARE(WireValue::toCurrency(QStringLiteral("-15000")).scaled(), -15000);
        QCOMPARE(WireValue::toInteger(QStringLiteral("abc")), 0);
        const QDateTime t(QDate(2026, 11, 21), QTime(10, 5));
        QCOMPARE(WireValue::from(t), QByteArray("2026-11-21T10:05:00"));
        QCOMPARE(WireValue::toDate(QStringLiteral("2026-11-21T10:05:00")), t);
    }
};

QTEST_GUILESS_MAIN(TestCurrency)
#include "tst_currency.moc"
