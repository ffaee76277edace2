// SPDX-License-Identifier: GPL-3.0-or-later
#include "printer/KelvoProtocolControl.h"
#include "printer/SerialLine.h"
#include "printer/WireFrame.h"
#include "settings/ProgramFolder.h"

#include <QFile>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <memory>

namespace {

// The far end of a pseudo-terminal, playing a printer that ACKs and answers
// with what the test says.
class PtyPrinter
{
public:
    PtyPrinter()
    {
        m_fd = posix_openpt(O_RDWR | O_NOCTTY);
        if (m_fd < 0 || grantpt(m_fd) != 0 || unlockpt(m_fd) != 0)
            return;
        m_slave = QString::fromLocal8Bit(ptsname(m_fd));
        ::fcntl(m_fd, F_SETFL, ::fcntl(m_fd, F_GETFL) | O_NONBLOCK);
        m_notifier = std::make_unique<QSocketNotifier>(m_fd, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] { take(); });
    }
    ~PtyPrinter() { hangUp(); }

    QString slave() const { return m_slave; }
    void hangUp()
    {
        m_notifier.reset();
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }

    QList<QByteArray> answer{"0"};
    QList<QList<QByteArray>> requests;

private:
    void take()
    {
        char buf[512];
        const ssize_t n = ::read(m_fd, buf, sizeof buf);
        if (n <= 0)
            return;
        m_decoder.feed(QByteArray(buf, int(n)));
        while (auto e = m_decoder.next()) {
            if (e->kind != Wire::FrameDecoder::Kind::Frame)
                continue;
            requests.append(e->fields);
            const QByteArray reply = QByteArray(1, Wire::ACK) + Wire::encodeFrame(e->seq, answer);
            QCOMPARE(::write(m_fd, reply.constData(), size_t(reply.size())), ssize_t(reply.size()));
        }
    }

    int m_fd = -1;
    QString m_slave;
    std::unique_ptr<QSocketNotifier> m_notifier;
    Wire::FrameDecoder m_decoder;
};

}

class TestSerialLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { SetProgramFolderForTests(QString()); }

    void settingsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("read"); // speed parity data stop, empty when refused
        QTest::newRow("usual") << "9600,n,8,1" << "9600 N 8 1";
        QTest::newRow("even 7 2") << "19200,E,7,2" << "19200 E 7 2";
        QTest::newRow("odd, blanks") << " 1200 , o , 5 , 1.5 " << "1200 O 5 1.5";
        QTest::newRow("mark") << "115200,m,8,1" << "115200 M 8 1";
        QTest::newRow("space") << "4800,s,6,1" << "4800 S 6 1";
        for (const char *bad : {"", "9600", "9600,n,8", "9600,n,8,1,0", "fast,n,8,1", "0,n,8,1", "-9600,n,8,1",
                                "9600,x,8,1", "9600,no,8,1", "9600,n,9,1", "9600,n,4,1", "9600,n,8,3", ",,,", "9600;n;8;1"})
            QTest::newRow(bad) << QString::fromLatin1(bad) << QString();
    }
    void settingsText()
    {
        QFETCH(QString, text);
        QFETCH(QString, read);
        const auto s = SerialLine::parse(text);
        QCOMPARE(s.has_value(), !read.isEmpty());
        if (!s)
            return;
        const QMap<int, QString> parity{{QSerialPort::NoParity, "N"}, {QSerialPort::EvenParity, "E"},
                                        {QSerialPort::OddParity, "O"}, {QSerialPort::MarkParity, "M"},
                                        {QSerialPort::SpaceParity, "S"}};
        const QMap<int, QString> stop{{QSerialPort::OneStop, "1"}, {QSerialPort::OneAndHalfStop, "1.5"},
                                      {QSerialPort::TwoStop, "2"}};
        QCOMPARE(QStringLiteral("%1 %2 %3 %4").arg(s->speed).arg(parity.value(s->parity)).arg(int(s->dataBits))
                     .arg(stop.value(s->stopBits)),
                 read);
    }

    void deviceNames()
    {
        QTemporaryDir folder;
        SetProgramFolderForTests(folder.path());
        QCOMPARE(SerialLine::devicePath(1), QStringLiteral("/dev/ttyS0"));
        QCOMPARE(SerialLine::devicePath(12), QStringLiteral("/dev/ttyS11"));
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), folder.filePath(QStringLiteral("COM3"))));
        QCOMPARE(SerialLine::devicePath(3), folder.filePath(QStringLiteral("COM3")));
        QCOMPARE(SerialLine::devicePath(4), QStringLiteral("/dev/ttyS3"));
        // A link whose device is gone (an unplugged adapter) still names the
        // port: it fails to open instead of falling back to /dev/ttyS4.
        QVERIFY(QFile::link(folder.filePath(QStringLiteral("gone")), folder.filePath(QStringLiteral("COM5"))));
        QCOMPARE(SerialLine::devicePath(5), folder.filePath(QStringLiteral("COM5")));
        KelvoProtocolControl control;
        control.setUseTcp(0);
        control.setComPort(5);
        control.OpenComPort();
        QVERIFY(!control.IsComPortOpen());
        SetProgramFolderForTests(QString());
    }

    void requestAndAnswerOverAPseudoTerminal()
    {
        PtyPrinter printer;
        QVERIFY(!printer.slave().isEmpty());
        QTemporaryDir folder;
        QVERIFY(QFile::link(printer.slave(), folder.filePath(QStringLiteral("COM7"))));
        SetProgramFolderForTests(folder.path());

        KelvoProtocolControl control;
        control.setEuroSettings(2);
        control.setUseTcp(0);
        control.setComPort(7);
        control.setComSettings(QStringLiteral("9600,n,8,1"));
        control.setTimeoutAck(1);
        control.setTimeoutOp(1);
        control.OpenComPort();
        QVERIFY(control.IsComPortOpen());

        printer.answer = {"0", "DateTime=2026-11-21T10:05:00", QByteArray("HeaderLineText=CAFF\xC8 \x80") + char(0x03)};
        QCOMPARE(control.ReadDateTime(), 0);
        QCOMPARE(printer.requests.value(0), QList<QByteArray>{"ReadDateTime"});
        QCOMPARE(control.DateMonth(), int16_t(11));
        QCOMPARE(control.HeaderLineText(), QStringLiteral("CAFFÈ €\x03"));

        // The line hangs up: the call fails as "not connected" and the port is closed.
        printer.hangUp();
        QCOMPARE(control.ReadDateTime(), 1);
        QVERIFY(!control.IsComPortOpen());
        control.CloseComPort();
        QCOMPARE(control.ReadDateTime(), 2);
    }

    void unusableSettingsLeaveThePortClosed()
    {
        PtyPrinter printer;
        QTemporaryDir folder;
        QVERIFY(QFile::link(printer.slave(), folder.filePath(QStringLiteral("COM2"))));
        SetProgramFolderForTests(folder.path());

        KelvoProtocolControl control;
        control.setEuroSettings(2);
        control.setComPort(2);
        for (const char *bad : {"", "9600", "abc,n,8,1", "9600,q,8,1", "9600,n,0,1", "9600,n,8,7"}) {
            control.setComSettings(QString::fromLatin1(bad));
            control.OpenComPort();
            QVERIFY2(!control.IsComPortOpen(), bad);
            int16_t index = 1;
            QCOMPARE(control.ReadReparto(index), 2);
        }
        control.setComPort(99); // /dev/ttyS98: no such device
        control.setComSettings(QStringLiteral("9600,n,8,1"));
        control.OpenComPort();
        QVERIFY(!control.IsComPortOpen());
        QVERIFY(printer.requests.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSerialLine)
#include "tst_serialline.moc"
