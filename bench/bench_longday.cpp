// SPDX-License-Identifier: GPL-3.0-or-later
// A long day at the till: receipts through the program's control against
// the emulator running as its own process, as users run it, with its state
// file. Each receipt sells two lines, every third voids one, every fifth
// takes an amount off, and is paid in cash or by card in turn. A daily
// closure every 500 receipts, a new journal (DGFE) every 2 000, as a shop
// changes the card; every 200 receipts the whole programming is read into
// the screen's grids and written back (50 round trips in 10 000 receipts).
//
//   bench_longday [receipts [--no-state]]     (default 10000, with a state file)
//
// Targets: memory of both processes grows under 10 % after the warm-up (the
// first journal's worth, 2 000 receipts); the calls per second of the last
// thousand receipts within 10 % of the first thousand. Also printed: what the
// emulator wrote to disk per receipt, and the size of its state at the end.
// Exit status 1 when a target is missed.

#include "BenchLink.h"
#include "EmulatorProcess.h"
#include "printer/KelvoProtocolControl.h"
#include "printer/SharedState.h"
#include "programming/RestoreProgramming.h"
#include "programming/XmlViewPrinterRead.h"
#include "programming/XmlViewTables.h"
#include "ui/MsgBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

// CPU time of a process's main thread, in ns: what a call costs it,
// whatever else the machine runs.
qint64 cpuNs(qint64 pid)
{
    QFile f(QStringLiteral("/proc/%1/schedstat").arg(pid));
    return f.open(QIODevice::ReadOnly) ? f.readAll().split(' ').value(0).toLongLong() : 0;
}

const char *verdict(bool ok) { return ok ? "met" : "NOT MET"; }

// The restorers in order, and how often each ended refused.
const char *const RestoreNames[] = {"Iva", "Rep", "Carte", "Ticket", "Flag", "PS2", "Promo", "Contanti", "Int"};
int restoreRefused[9] = {};

void programmingRoundTrip()
{
    XmlViewTables t;
    t.SetupGrids();
    XmlViewPrinterRead::LoadIvaFromPrinter(t);
    XmlViewPrinterRead::LoadRepFromPrinter(t);
    XmlViewPrinterRead::LoadCarteFromPrinter(t);
    XmlViewPrinterRead::LoadTicketFromPrinter(t);
    XmlViewPrinterRead::LoadFlagFromPrinter(t);
    XmlViewPrinterRead::LoadIntFromPrinter(t);
    XmlViewPrinterRead::LoadLogoFromPrinter(t);
    XmlViewPrinterRead::LoadPS2FromPrinter(t);
    XmlViewPrinterRead::LoadPromoFromPrinter(t);
    XmlViewPrinterRead::LoadContantiFromPrinter(t);
    int i = 0;
    for (auto restore : {RestoreProgramming::RestoreIva, RestoreProgramming::RestoreRep, RestoreProgramming::RestoreCarte,
                         RestoreProgramming::RestoreTicket, RestoreProgramming::RestoreFlag, RestoreProgramming::RestorePS2,
                         RestoreProgramming::RestorePromo, RestoreProgramming::RestoreContanti,
                         RestoreProgramming::RestoreInt})
        restoreRefused[i++] += restore(t) != 0;
}

}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int receipts = argc > 1 ? QByteArray(argv[1]).toInt() : 10000;
    const bool noState = argc > 2 && QByteArray(argv[2]) == "--no-state";
    if (EmulatorProcess::program().isEmpty()) {
        std::fprintf(stderr, "fiscorda-emulator not found beside the benchmark\n");
        return 2;
    }
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("state.json"));

    QProcess emulator;
    const quint16 port = EmulatorProcess::startTcp(
        emulator, QStringList{QStringLiteral("--paper"), dir.filePath(QStringLiteral("paper.txt"))}
                      + (noState ? QStringList{QStringLiteral("--no-state")} : QStringList{QStringLiteral("--state"), state}));
    KelvoProtocolControl control;
    if (!port || !OpenControl(control, port)) {
        std::fprintf(stderr, "cannot start or reach the emulator\n");
        return 2;
    }
    gFPControl = &control;
    gMaxNReparti = 40;
    MsgBox::startRecording();
    const qint64 emuPid = emulator.processId();
    const qint64 selfPid = QCoreApplication::applicationPid();

    constexpr int Block = 1000, Warmup = 2000;
    QList<double> callsPerSecond; // per block of receipts
    QList<double> steadyCallsPerSecond; // the same from the block's median receipt: what a busy machine's stalls do not move
    QList<qint64> receiptNs;
    QList<double> cpuPerCall[2]; // µs of CPU per call, program and emulator, per block
    qint64 cpuStart[2] = {0, 0};
    qint64 blockCalls = 0, blockNs = 0, refused = 0;
    long rssWarm[2] = {0, 0}, rssPeak[2] = {0, 0};
    qint64 writtenAtWarm = 0;
    QList<double> roundTrips;
    QElapsedTimer timer;
    int16_t op = 1;
    auto call = [&](int16_t result) {
        ++blockCalls;
        refused += result != 0;
        return result;
    };

    for (int r = 0; r < receipts; ++r) {
        if (r % Block == 0) {
            cpuStart[0] = cpuNs(selfPid);
            cpuStart[1] = cpuNs(emuPid);
        }
        timer.start();
        const Currency a = Currency::fromScaled(10000 + 700 * (r % 37)), b = Currency::fromScaled(5000 + 300 * (r % 11));
        call(control.SellReparto(op, 1.0f, QString(), a, int16_t(1 + r % 4), 1));
        call(control.SellReparto(op, 2.0f, QStringLiteral("ARTICOLO %1").arg(r % 50), b, int16_t(1 + (r + 1) % 4), 1));
        if (r % 3 == 0)
            call(control.StornoReparto(op, QString(), 1.0f, a, int16_t(1 + r % 4), 1));
        if (r % 5 == 0)
            call(control.AbbuonoTotale(op, Currency::fromScaled(1000)));
        call(control.PayReceipt(op, QString(), Currency(), r % 2 ? 2 : 0, 0, 1));
        if ((r + 1) % 500 == 0)
            call(control.FiscalClosure(op));
        if ((r + 1) % 2000 == 0)
            call(control.FormatDgfe(op));
        receiptNs << timer.nsecsElapsed();
        blockNs += receiptNs.last();

        if ((r + 1) % 200 == 0) {
            QElapsedTimer t;
            t.start();
            programmingRoundTrip();
            roundTrips << t.nsecsElapsed() / 1e9;
        }
        if ((r + 1) % Block == 0) {
            callsPerSecond << blockCalls / (blockNs / 1e9);
            cpuPerCall[0] << (cpuNs(selfPid) - cpuStart[0]) / 1e3 / blockCalls;
            cpuPerCall[1] << (cpuNs(emuPid) - cpuStart[1]) / 1e3 / blockCalls;
            std::nth_element(receiptNs.begin(), receiptNs.begin() + receiptNs.size() / 2, receiptNs.end());
            steadyCallsPerSecond << double(blockCalls) / Block / (receiptNs[receiptNs.size() / 2] / 1e9);
            receiptNs.clear();
            const long rss[2] = {long(EmulatorProcess::procField(selfPid, "status", "VmRSS:")), long(EmulatorProcess::procField(emuPid, "status", "VmRSS:"))};
            std::printf("receipts %5d: %6.0f calls/s (median receipt: %6.0f); CPU per call %.1f + %.1f us; memory: program %ld kB, emulator %ld kB\n", r + 1,
                        callsPerSecond.last(), steadyCallsPerSecond.last(), cpuPerCall[0].last(), cpuPerCall[1].last(),
                        rss[0], rss[1]);
            std::fflush(stdout);
            for (int i = 0; i < 2; ++i) {
                if (r + 1 == Warmup)
                    rssWarm[i] = rss[i];
                if (r + 1 > Warmup)
                    rssPeak[i] = qMax(rssPeak[i], rss[i]);
            }
            if (r + 1 == Warmup)
                writtenAtWarm = EmulatorProcess::procField(emuPid, "io", "wchar:");
            blockCalls = blockNs = 0;
        }
    }
    const qint64 written = EmulatorProcess::procField(emuPid, "io", "wchar:") - writtenAtWarm;
    const qint64 stateBytes = QFileInfo(state).size(), logBytes = QFileInfo(state + QStringLiteral(".log")).size();
    control.CloseTcp();
    emulator.terminate();
    emulator.waitForFinished(5000);

    bool ok = true;
    std::printf("\n%d receipts, %lld refused calls at the till\n", receipts, refused);
    for (int i = 0; i < 9; ++i)
        if (restoreRefused[i])
            std::printf("  Restore%s ended refused in %d round trips\n", RestoreNames[i], restoreRefused[i]);
    if (callsPerSecond.size() >= 2) {
        const double ratio = callsPerSecond.last() / callsPerSecond.first();
        const double steady = steadyCallsPerSecond.last() / steadyCallsPerSecond.first();
        std::printf("calls/s, whole thousands: first %.0f, last %.0f, ratio %.3f\n", callsPerSecond.first(),
                    callsPerSecond.last(), ratio);
        std::printf("calls/s at the median receipt: first thousand %.0f, last %.0f, ratio %.3f (target 0.90..1.10) %s\n",
                    steadyCallsPerSecond.first(), steadyCallsPerSecond.last(), steady,
                    verdict(steady >= 0.9 && steady <= 1.1));
        ok &= steady >= 0.9 && steady <= 1.1;
        // CPU time counts the programming round trips and closures too: they
        // fall at the same places in every thousand.
        for (int i = 0; i < 2; ++i) {
            const double cpu = cpuPerCall[i].last() / cpuPerCall[i].first();
            std::printf("CPU per call, %s: first thousand %.1f us, last %.1f us, ratio %.3f (target: not above 1.10) %s\n",
                        i ? "emulator" : "program ", cpuPerCall[i].first(), cpuPerCall[i].last(), cpu,
                        verdict(cpu <= 1.1));
            ok &= cpu <= 1.1;
        }
    }
    const char *who[2] = {"program ", "emulator"};
    for (int i = 0; i < 2 && rssWarm[i]; ++i) {
        const double growth = double(rssPeak[i] - rssWarm[i]) / rssWarm[i];
        std::printf("memory, %s: %ld kB after %d receipts, at most %ld kB after, growth %.1f %% (target < 10 %%) %s\n",
                    who[i], rssWarm[i], Warmup, rssPeak[i], growth * 100, verdict(growth < 0.1));
        ok &= growth < 0.1;
    }
    if (!roundTrips.isEmpty())
        std::printf("programming read + restore: %lld round trips, first %.3f s, last %.3f s\n",
                    qlonglong(roundTrips.size()), roundTrips.first(), roundTrips.last());
    if (receipts > Warmup)
        std::printf("emulator wrote %.1f kB per receipt after the warm-up (state, log, paper); state at the end: "
                    "snapshot %lld kB, log %lld kB\n",
                    written / 1024.0 / (receipts - Warmup), stateBytes / 1024, logBytes / 1024);
    return ok ? 0 : 1;
}
