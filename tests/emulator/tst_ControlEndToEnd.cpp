// SPDX-License-Identifier: GPL-3.0-or-later
// The program's control talking to the emulator over loopback TCP and a
// pseudo-terminal (result codes per line fault: the control's own test): the
// control's requests as the emulator reads them, both ways.

#include "EmulatorTestKit.h"

#include "printer/KelvoProtocolControl.h"
#include "settings/ProgramFolder.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

using namespace Kit;

class TestControlEndToEnd : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    std::unique_ptr<EmulatorServer> emu;
    std::unique_ptr<KelvoProtocolControl> ctl;
    Clock clock;
    static constexpr int Com = 61;

    bool tcp() const
    {
        QFETCH_GLOBAL(QString, transport);
        return transport == QLatin1String("tcp");
    }

    // A control configured for the transport of this row, not yet open.
    std::unique_ptr<KelvoProtocolControl> makeControl() const
    {
        auto c = std::make_unique<KelvoProtocolControl>();
        c->setEuroSettings(2);
        c->setTimeoutAck(1);
        c->setTimeoutOp(1);
        c->setUseTcp(tcp() ? 1 : 0);
        c->setIpAddress(QStringLiteral("127.0.0.1"));
        c->setTcpPort(int16_t(emu->tcpPort()));
        c->setComPort(Com);
        c->setComSettings(QStringLiteral("9600,n,8,1"));
        return c;
    }

    bool open(KelvoProtocolControl &c) const
    {
        if (tcp())
            return c.OpenTcp() == 0;
        c.OpenComPort();
        return c.IsComPortOpen();
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<QString>("transport");
        QTest::newRow("tcp") << QStringLiteral("tcp");
        QTest::newRow("pty") << QStringLiteral("pty");
    }

    void init()
    {
        SetProgramFolderForTests(dir.path()); // where the control looks for COMn
        emu = std::make_unique<EmulatorServer>(EmulatorConfig());
        QVERIFY(emu->start());
        QVERIFY(emu->listenTcp(QHostAddress::LocalHost, 0));
        QString error;
        QVERIFY2(emu->openPty(dir.path(), Com, QStringLiteral("9600,n,8,1"), &error), qPrintable(error));
        ctl = makeControl();
        QVERIFY(open(*ctl));
    }

    void cleanup()
    {
        ctl.reset();
        emu.reset();
        SetProgramFolderForTests(QString());
    }

    void answersAndRefusals()
    {
        QCOMPARE(ctl->ReadDateTime(), int16_t(0));
        QVERIFY(ctl->DateTime().isValid());

        int16_t row = 9;
        QCOMPARE(ctl->WriteIva(9, 10.0f), int16_t(-1));
        QCOMPARE(ctl->ErrorCode(), int16_t(16));
        int16_t op = 1;
        QCOMPARE(ctl->SellReparto(op, 1.0f, QString(), Currency::fromUnits(2), row, 1), int16_t(-1));
        QCOMPARE(ctl->ErrorCode(), int16_t(22));

        const QString text = QStringLiteral("CAFFÈ € àèìòù");
        QCOMPARE(ctl->WriteReparto(4, text, {}, {}, {}, 0, 1, Currency::fromUnits(50), 0, 0, QString()), int16_t(0));
        row = 4;
        QCOMPARE(ctl->ReadReparto(row), int16_t(0));
        QCOMPARE(ctl->RepartoDescrizione(), text);
        QCOMPARE(ctl->RepartoLimite(), Currency::fromUnits(50));
        QCOMPARE(ctl->ErrorCode(), int16_t(0));

        // A receipt paid in two parts and another, then the day's journal read
        // line by line to 3102, by date and by receipt numbers.
        clock.attach(emu->model()); // 10 March: day and month tell apart
        QCOMPARE(ctl->SellReparto(op, 2.0f, QStringLiteral("ESPRESSO"), Currency::fromScaled(12000), row, 1), int16_t(0));
        QCOMPARE(ctl->PayReceipt(op, QString(), Currency::fromUnits(1), 0, 0, 1), int16_t(0));
        QCOMPARE(ctl->PaymentResidue(), Currency::fromScaled(14000));
        QCOMPARE(ctl->PayReceipt(op, QString(), Currency(), 2, 0, 1), int16_t(0));
        QCOMPARE(ctl->PaymentResidue(), Currency());
        QCOMPARE(ctl->SellReparto(op, 1.0f, QString(), Currency::fromUnits(1), row, 1), int16_t(0));
        QCOMPARE(ctl->PayReceipt(op, QString(), Currency(), 0, 0, 1), int16_t(0));
        QStringList day;
        for (const JournalEntry &e : emu->model().memory().journal.entries())
            day += e.lines;
        QVERIFY(day.join('\n').contains(QStringLiteral("ESPRESSO")));
        const auto readAll = [this](const std::function<int16_t(bool)> &read) {
            QStringList lines;
            int16_t result = read(true);
            while (result == 0) {
                lines << ctl->DgfeLine();
                if (ctl->InfoCode() == 3102)
                    break; // the last line comes with the code
                result = read(false);
            }
            return result == 0 ? lines : QStringList{QStringLiteral("result %1").arg(result)};
        };
        QCOMPARE(readAll([this](bool first) { return ctl->ReadDgfeByDate(1, 10, 3, 2026, 10, 3, 2026, first); }), day);
        QCOMPARE(readAll([this](bool first) { return ctl->ReadDgfeByNumber(1, 10, 3, 2026, 1, 2, first); }), day);
    }

    void powerCycle()
    {
        QCOMPARE(ctl->ReadDateTime(), int16_t(0));
        emu->setPower(false);
        QTest::qWait(200); // the program idles meanwhile and sees the line go
        QElapsedTimer took;
        took.start();
        QCOMPARE(ctl->ReadDateTime(), int16_t(1));
        QCOMPARE(ctl->ReadDateTime(), int16_t(1)); // tried again, still off
        QVERIFY2(took.elapsed() < 1000, "a printer that is off answers at once");
        if (tcp())
            QCOMPARE(ctl->OpenTcp(), int32_t(1)); // refused while off

        emu->setPower(true);
        QTest::qWait(50);
        // No OpenTcp / OpenComPort by the program: the command brings the line back.
        QCOMPARE(ctl->ReadDateTime(), int16_t(0));
        int16_t n = 2;
        QCOMPARE(ctl->ReadIva(n), int16_t(0));
        QCOMPARE(ctl->IvaAliquota(), 10.0f);

        // A port the program closed stays closed.
        if (tcp())
            ctl->CloseTcp();
        else
            ctl->CloseComPort();
        QCOMPARE(ctl->ReadDateTime(), int16_t(2));
    }
};

QTEST_GUILESS_MAIN(TestControlEndToEnd)
#include "tst_ControlEndToEnd.moc"
