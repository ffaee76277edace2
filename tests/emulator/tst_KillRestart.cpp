// SPDX-License-Identifier: GPL-3.0-or-later
// The emulator as its own process, killed with SIGKILL at random moments
// during a burst of receipts and closures sent through the control. After
// each kill the state loads, and its totals are those of the receipts the
// control saw acknowledged: no receipt lost, none counted twice. The one
// receipt (or closure) whose answer was under way when the kill came may be
// on either side: the printer recorded it before answering, the PC never
// heard. A few kills here; FISCORDA_KILLS=200 (or more) for the long run.

#include "EmulatorTestKit.h"

#include "emulator/StateFile.h"
#include "printer/KelvoProtocolControl.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <thread>

class TestKillRestart : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;

    QString statePath() const { return dir.filePath(QStringLiteral("state.json")); }

    // Starts the emulator on a free port under 32768 (the control's port is
    // 16 bits, signed); 0 when it would not come up.
    quint16 startEmulator(QProcess &proc, QString *notes)
    {
        const QString exe = QCoreApplication::applicationDirPath() + QStringLiteral("/fiscorda-emulator");
        for (int attempt = 0; attempt < 20; ++attempt) {
            const quint16 port = quint16(20000 + QRandomGenerator::global()->bounded(12000));
            proc.setProcessChannelMode(QProcess::MergedChannels);
            proc.start(exe, {QStringLiteral("--tcp"), QStringLiteral("127.0.0.1:%1").arg(port), QStringLiteral("--state"),
                             statePath(), QStringLiteral("--paper"), dir.filePath(QStringLiteral("paper.txt")),
                             QStringLiteral("--journal-size"), QStringLiteral("4096")});
            if (!proc.waitForStarted(5000))
                return 0;
            QByteArray out;
            while (!out.contains("listening on") && proc.state() == QProcess::Running)
                if (proc.waitForReadyRead(5000))
                    out += proc.readAll();
                else
                    break;
            *notes = QString::fromUtf8(out);
            if (out.contains("listening on"))
                return port;
            proc.kill();
            proc.waitForFinished();
        }
        return 0;
    }

    struct Seen
    {
        qint64 net = 0; // in ten-thousandths, as Currency keeps them
        int receipts = 0;
        int closures = 0;
    };

    static Currency price(int i) { return Currency::fromScaled(10000 + 700 * (i % 37)); }

private Q_SLOTS:
    void acknowledgedReceiptsSurviveSigkill()
    {
        if (!QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/fiscorda-emulator")))
            QSKIP("fiscorda-emulator is not built beside the tests");
        const int asked = qEnvironmentVariableIntValue("FISCORDA_KILLS");
        const int kills = asked > 0 ? asked : 8;
        Seen seen;
        int wrote = 0, inFlightCounted = 0;
        auto *rng = QRandomGenerator::global();
        for (int round = 0; round < kills; ++round) {
            QProcess proc;
            QString notes;
            const quint16 port = startEmulator(proc, &notes);
            QVERIFY2(port, qPrintable(notes));
            QVERIFY2(!notes.contains(QStringLiteral("damaged")), qPrintable(notes));
            const qint64 pid = proc.processId();

            // The killer: a moment picked at random, whatever is under way.
            std::atomic<bool> killed = false;
            std::thread killer([pid, &killed, delay = 20 + int(rng->bounded(250))] {
                std::this_thread::sleep_for(std::chrono::milliseconds(delay));
                ::kill(pid_t(pid), SIGKILL);
                killed = true;
            });

            KelvoProtocolControl ctl;
            ctl.setTimeoutAck(2);
            ctl.setTimeoutOp(2);
            Seen pending = seen; // what the printer holds if the call under way got through
            ctl.setEuroSettings(2);
            ctl.setUseTcp(1);
            ctl.setIpAddress(QStringLiteral("127.0.0.1"));
            ctl.setTcpPort(int16_t(port));
            if (ctl.OpenTcp() == 0) {
                for (int i = 0; !killed; ++i, ++wrote) {
                    int16_t op = 1;
                    if (i % 25 == 24) {
                        pending = seen;
                        ++pending.closures;
                        if (ctl.FiscalClosure(op) != 0)
                            break;
                        seen = pending;
                        // A new journal with each closure keeps the state small; a
                        // refusal here only means the printer is gone.
                        if (ctl.FormatDgfe(op) != 0)
                            break;
                        continue;
                    }
                    // A receipt: two sales, now and then a void or an amount off.
                    const Currency a = price(wrote), b = price(wrote + 11);
                    qint64 net = a.scaled() + b.scaled();
                    if (ctl.SellReparto(op, 1.0f, QString(), a, int16_t(1 + wrote % 4), 1) != 0
                        || ctl.SellReparto(op, 1.0f, QString(), b, int16_t(1 + (wrote + 1) % 4), 1) != 0)
                        break;
                    if (wrote % 3 == 0) {
                        if (ctl.StornoReparto(op, QString(), 1.0f, b, int16_t(1 + (wrote + 1) % 4), 1) != 0)
                            break;
                        net -= b.scaled();
                    }
                    if (wrote % 5 == 0) {
                        if (ctl.AbbuonoTotale(op, Currency::fromScaled(1000)) != 0)
                            break;
                        net -= 1000;
                    }
                    pending = seen;
                    pending.net += net;
                    ++pending.receipts;
                    if (ctl.PayReceipt(op, QString(), Currency(), 0, 0, 1) != 0)
                        break;
                    seen = pending;
                }
            }
            killer.join();
            proc.waitForFinished(5000);

            // The state as the next start will find it.
            StateFile file(statePath());
            const StateFile::Loaded loaded = file.load();
            QVERIFY2(loaded.outcome == StateFile::Outcome::Loaded, qPrintable(loaded.message));
            QVERIFY2(loaded.message.isEmpty(), qPrintable(loaded.message));
            EmulatorConfig config;
            PrinterModel model(config);
            model.loadMemory(loaded.json);
            const PrinterMemory &m = model.memory();
            const Seen held{m.period.net().scaled(), m.period.receipts, int(m.fiscalMemory.size())};
            const bool asSeen = held.net == seen.net && held.receipts == seen.receipts && held.closures == seen.closures;
            const bool asPending = held.net == pending.net && held.receipts == pending.receipts
                                   && held.closures == pending.closures;
            QVERIFY2(asSeen || asPending,
                     qPrintable(QStringLiteral("round %1: the printer holds %2 receipts, %3, %4 closures; the PC saw "
                                               "%5, %6, %7 acknowledged")
                                    .arg(round).arg(held.receipts).arg(held.net).arg(held.closures)
                                    .arg(seen.receipts).arg(seen.net).arg(seen.closures)));
            qint64 closed = 0;
            for (const ClosureRecord &z : m.fiscalMemory)
                closed += z.total.scaled();
            QCOMPARE(closed + m.day.net().scaled(), held.net);
            if (!asSeen) {
                seen = pending; // the PC learns it from the printer, as a till does after a restart
                ++inFlightCounted;
            }
        }
        qInfo("%d kills, %d calls; %d receipts and %d closures acknowledged; %d answers lost with the kill "
              "but recorded by the printer",
              kills, wrote, seen.receipts, seen.closures, inFlightCounted);
    }
};

QTEST_GUILESS_MAIN(TestKillRestart)
#include "tst_KillRestart.moc"
