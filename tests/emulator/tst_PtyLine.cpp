// SPDX-License-Identifier: GPL-3.0-or-later
// The emulator's serial port: a pseudo-terminal linked as COMn, answering
// only at its own line settings. (Hung up by a power off and back on the
// same link: the control's end-to-end test over the pseudo-terminal.)

#include "EmulatorTestKit.h"
#include "TestFiles.h"

#include "emulator/LineSettings.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

using namespace Kit;
using Kind = Wire::FrameDecoder::Kind;

namespace {

// The program's end of the line, as plain POSIX.
class Terminal
{
public:
    ~Terminal() { close(); }
    bool open(const QString &path)
    {
        fd = ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        return fd >= 0;
    }
    void close()
    {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
    bool set(const QString &settings)
    {
        termios t{};
        return tcgetattr(fd, &t) == 0 && LineSettings::parse(settings)->applyTo(t) && tcsetattr(fd, TCSANOW, &t) == 0
               && tcflush(fd, TCIOFLUSH) == 0;
    }
    void send(char seq, const QList<QByteArray> &fields)
    {
        const QByteArray f = Wire::encodeFrame(seq, fields);
        QCOMPARE(::write(fd, f.constData(), size_t(f.size())), ssize_t(f.size()));
    }
    QList<Wire::FrameDecoder::Event> collect(int ms, int count)
    {
        QList<Wire::FrameDecoder::Event> events;
        waitFor([&] {
            char buf[512];
            ssize_t n;
            while ((n = ::read(fd, buf, sizeof buf)) > 0)
                decoder.feed(QByteArray(buf, int(n)));
            while (auto e = decoder.next())
                events << *e;
            return int(events.size()) >= count;
        }, ms);
        return events;
    }
    int fd = -1;
    Wire::FrameDecoder decoder;
};

} // namespace

class TestPtyLine : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

private Q_SLOTS:
    void answersOnlyAtItsOwnSettings()
    {
        EmulatorServer emu{EmulatorConfig()};
        QVERIFY(emu.start());
        QString error;
        QVERIFY2(emu.openPty(dir.path(), 7, QStringLiteral("19200,e,7,1"), &error), qPrintable(error));
        QCOMPARE(emu.ptyLink(), dir.filePath(QStringLiteral("COM7")));
        QVERIFY(QFileInfo(emu.ptyLink()).isSymLink());

        Terminal t;
        QVERIFY(t.open(emu.ptyLink()));
        for (const char *wrong : {"9600,e,7,1", "38400,e,7,1", "19200,e,7,2"}) {
            QVERIFY(t.set(QString::fromLatin1(wrong)));
            t.send('0', {"ReadDateTime"});
            QVERIFY2(t.collect(300, 1).isEmpty(), wrong);
        }
        // Parity and data bits never reach a pseudo-terminal (the kernel
        // keeps 8 data bits, no parity): only speed and stop bits count.
        QVERIFY(t.set(QStringLiteral("19200,n,8,1")));
        t.send('1', {"ReadReparto", "1"});
        const auto events = t.collect(2000, 2);
        QCOMPARE(events.size(), 2);
        QCOMPARE(events[0].kind, Kind::Ack);
        QCOMPARE(events[1].seq, '1');
        QCOMPARE(field(events[1], "RepartoDescrizione"), QStringLiteral("ALIMENTARI"));

        // A half frame at the wrong speed does not spoil the next good one.
        QVERIFY(t.set(QStringLiteral("9600,e,7,1")));
        QCOMPARE(::write(t.fd, "\x02" "2Read", 6), ssize_t(6));
        QVERIFY(t.collect(300, 1).isEmpty());
        QVERIFY(t.set(QStringLiteral("19200,e,7,1")));
        t.send('3', {"ReadIva", "3"});
        const auto clean = t.collect(2000, 2);
        QCOMPARE(clean.value(0).kind, Kind::Ack);
        QCOMPARE(field(clean.value(1), "IvaAliquota"), QStringLiteral("5"));
    }

    void realSpeedTakesTheCharacterTimes()
    {
        EmulatorConfig config;
        config.realLineSpeed = true;
        EmulatorServer emu{config};
        QVERIFY(emu.start());
        QVERIFY(emu.openPty(dir.path(), 11, QStringLiteral("2400,n,8,1"))); // 4.17 ms a byte
        const double charMs = 10 * 1000.0 / 2400;
        Terminal t;
        QVERIFY(t.open(emu.ptyLink()));
        QVERIFY(t.set(QStringLiteral("2400,n,8,1")));

        const QByteArray request = Wire::encodeFrame('0', {"ReadReparto", "1"});
        QElapsedTimer clock;
        clock.start();
        t.send('0', {"ReadReparto", "1"});
        QCOMPARE(t.collect(3000, 1).value(0).kind, Kind::Ack);
        const qint64 ackMs = clock.elapsed();
        const auto answer = t.collect(3000, 1);
        const qint64 answerMs = clock.elapsed();
        QCOMPARE(answer.size(), 1);
        const qsizetype answerBytes = Wire::encodeFrame('0', answer[0].fields).size();

        // The ACK comes after the whole request and itself have crossed the
        // line, the answer after the ACK and all its own bytes.
        const double ackWire = (request.size() + 1) * charMs;
        const double allWire = ackWire + answerBytes * charMs;
        QVERIFY2(ackMs >= ackWire - 1, qPrintable(QStringLiteral("ACK after %1 ms").arg(ackMs)));
        QVERIFY2(answerMs >= allWire - 1, qPrintable(QStringLiteral("answer after %1 ms").arg(answerMs)));
        QVERIFY2(answerMs < allWire * 1.5 + 200, qPrintable(QStringLiteral("answer after %1 ms").arg(answerMs)));
    }

    void linkGoesWithTheEmulatorAndFilesAreLeftAlone()
    {
        const QString link = dir.filePath(QStringLiteral("COM9"));
        {
            EmulatorServer emu{EmulatorConfig()};
            QVERIFY(emu.start());
            QVERIFY(emu.openPty(dir.path(), 9));
            QVERIFY(QFileInfo(link).isSymLink());
        }
        QVERIFY(!QFileInfo(link).exists() && !QFileInfo(link).isSymLink());

        TestFiles::writeFile(link, "");
        EmulatorServer emu{EmulatorConfig()};
        QVERIFY(emu.start());
        QString error;
        QVERIFY(!emu.openPty(dir.path(), 9, QStringLiteral("9600,n,8,1"), &error));
        QVERIFY(error.contains(QStringLiteral("not a link")));
        QVERIFY(QFileInfo(link).isFile());
        QVERIFY(!emu.openPty(dir.path(), 10, QStringLiteral("9600,x,8,1"), &error));
    }
};

QTEST_GUILESS_MAIN(TestPtyLine)
#include "tst_PtyLine.moc"
