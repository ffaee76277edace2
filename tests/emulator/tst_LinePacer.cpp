// SPDX-License-Identifier: GPL-3.0-or-later
// A serial line's pace: bytes come through one character time after the
// other, never early, and a wake-up hands on a few at a time.

#include "emulator/LinePacer.h"
#include "emulator/LineTimer.h"
#include "emulator/LineSettings.h"

#include <QElapsedTimer>
#include <QTest>

class TestLinePacer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void characterTimes_data()
    {
        QTest::addColumn<QString>("settings");
        QTest::addColumn<qint64>("ns");
        QTest::newRow("9600 8N1: 10 bits") << "9600,n,8,1" << qint64(1'041'667);
        QTest::newRow("19200 7E2: 11 bits") << "19200,e,7,2" << qint64(572'917);
        QTest::newRow("1200 8O1.5: 11.5 bits") << "1200,o,8,1.5" << qint64(9'583'333);
    }
    void characterTimes()
    {
        QFETCH(QString, settings);
        QFETCH(qint64, ns);
        QCOMPARE(LineSettings::parse(settings)->characterTimeNs(), ns);
    }

    void bytesComeThroughOneAfterTheOther()
    {
        LinePacer line;
        line.setCharacterTime(1000);
        line.push("abcdef", 0);
        QVERIFY(line.take(999).isEmpty()); // the first byte is not through yet
        QCOMPARE(line.take(1000), QByteArray("a"));
        QCOMPARE(line.take(4500), QByteArray("bcd")); // through at 2000, 3000, 4000
        // More while the line is busy queue behind, without a gap.
        line.push("gh", 4500);
        QCOMPARE(line.take(6999), QByteArray("ef"));
        QCOMPARE(line.take(100'000), QByteArray("gh")); // at 7000 and 8000
        QVERIFY(line.isEmpty());
        // An idle line starts the next byte when it comes.
        line.push("i", 200'000);
        QVERIFY(line.take(200'999).isEmpty());
        QCOMPARE(line.take(201'000), QByteArray("i"));
    }

    void wakesInBatchesButNeverAfterTheLastByte()
    {
        LinePacer line;
        line.setCharacterTime(1000);
        QCOMPARE(line.nextWake(0), qint64(-1));
        line.push(QByteArray(2000, 'x'), 0);
        QCOMPARE(line.nextWake(0), qint64(LinePacer::BatchNs)); // a millisecond's worth
        line.take(1'998'000);
        QCOMPARE(line.nextWake(1'998'000), qint64(2'000'000)); // two left: the end of the last
        QCOMPARE(line.nextWake(3'000'000), qint64(3'000'000)); // late: at once
        QCOMPARE(line.take(3'000'000).size(), 2);
        line.setCharacterTime(500'000); // slow: at least Batch characters
        line.push(QByteArray(10, 'y'), 4'000'000);
        QCOMPARE(line.nextWake(4'000'000), qint64(4'000'000 + 500'000 * LinePacer::Batch));
    }

    void unpacedLetsEverythingThrough()
    {
        LinePacer line;
        line.push("abc", 5);
        QCOMPARE(line.take(5), QByteArray("abc"));
    }

    // Below a millisecond: fires once, never early; a stopped or re-armed
    // timer does not fire for the old time.
    void lineTimerKeepsTimeBelowAMillisecond()
    {
        LineTimer timer;
        int fired = 0;
        QElapsedTimer clock;
        qint64 at = 0;
        connect(&timer, &LineTimer::timeout, this, [&] {
            ++fired;
            at = clock.nsecsElapsed();
        });
        clock.start();
        timer.startIn(300'000);
        QVERIFY(QTest::qWaitFor([&] { return fired > 0; }, 5000));
        QVERIFY2(at >= 300'000, qPrintable(QString::number(at)));
        timer.startIn(200'000);
        timer.stop();
        timer.startIn(50'000'000); // re-armed later: the old time passes silently
        timer.stop();
        QTest::qWait(20);
        QCOMPARE(fired, 1);
        QVERIFY(!timer.isActive());
    }
};

QTEST_GUILESS_MAIN(TestLinePacer)
#include "tst_LinePacer.moc"
