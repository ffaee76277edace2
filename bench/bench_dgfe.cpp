// SPDX-License-Identifier: GPL-3.0-or-later
// The journal read to the screen: the real DGFECrtForm, offscreen, reading
// the journal from the emulator through the program's control. The emulator
// runs as a process of its own, as users run it (in a thread of this one the
// figure hung on how the scheduler placed the two threads: 1.9 s pinned to
// one processor, 6.4 s not), its journal written beforehand into its state
// file. Two reads:
//
//  1. 30 000 lines over loopback TCP: the total time, the lines per second,
//     the longest gap between two turns of the event loop the read gives the
//     screen, and how much this process grew.
//     Targets: under 5 s, no gap over 50 ms, growth under 30 MB.
//  2. 3 000 lines over a pseudo-terminal at 115200 baud, paced at the line's
//     speed (--real-speed), against the time its bytes need on the wire.
//     Targets: within 1.05 x the wire time, no gap over 50 ms.
//
//   bench_dgfe [tcp lines [serial lines]]      (default 30000 3000)
//
// Exit status 1 when a target is missed.

#include "BenchLink.h"
#include "EmulatorProcess.h"
#include "emulator/MemoryCodec.h"
#include "emulator/StateFile.h"
#include "journal/DGFECrtForm.h"
#include "journal/DGFEForm.h"
#include "printer/KelvoProtocolControl.h"
#include "settings/ProgramFolder.h"
#include "ui/MsgBox.h"

#include <QApplication>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>
#include <cstdlib>

namespace {

// Resident memory of the process, in kB.
long residentKb()
{
    return long(EmulatorProcess::procField(QCoreApplication::applicationPid(), "status", "VmRSS:"));
}

// A journal of `lines` lines on one day: receipts of 30 lines each, with the
// accented letters and the euro sign a real one carries.
QList<JournalEntry> journalOf(int lines, QDate day)
{
    QList<JournalEntry> entries;
    int number = 0;
    for (int written = 0; written < lines;) {
        JournalEntry e;
        e.when = QDateTime(day, QTime(8, 0).addSecs(number * 7));
        e.kind = QStringLiteral("SCONTRINO");
        e.number = ++number;
        for (int i = 0; i < 30 && written < lines; ++i, ++written)
            e.lines << QStringLiteral("CAFFÈ %1                       %2,20 €").arg(i, 2).arg(i % 9);
        entries << e;
    }
    return entries;
}

constexpr int JournalKb = 64 * 1024;

// A state file whose journal holds `lines` lines of `day`.
bool writeState(const QString &path, int lines, QDate day)
{
    EmulatorConfig config;
    config.journalKb = JournalKb;
    PrinterMemory m = PrinterMemory::fresh(config);
    m.journal.setEntries(journalOf(lines, day));
    return StateFile(path).save(MemoryCodec::toJson(m));
}

struct Read
{
    int shown = 0;
    double seconds = 0;
    double gapMs = 0;
    long grownKb = 0;
    qint64 turns = 0;
};

// The whole selection of `day` read into the screen through gFPControl.
Read readToScreen(QApplication &app, QDate day)
{
    DGFEForm selection;
    selection.dtInizio->setDate(day);
    selection.dtFine->setDate(day);
    DGFECrtForm::ByNumber = false;
    DGFECrtForm::FromDate = selection.dtInizio;
    DGFECrtForm::ToDate = selection.dtFine;
    DGFECrtForm form;
    form.show();
    app.processEvents();

    Read r;
    QElapsedTimer sinceTurn;
    qint64 longestGapNs = 0;
    form.onReadTurn = [&] {
        if (sinceTurn.isValid())
            longestGapNs = qMax(longestGapNs, sinceTurn.nsecsElapsed());
        sinceTurn.start();
        ++r.turns;
    };
    const long before = residentKb();
    QElapsedTimer total;
    total.start();
    form.Command1->click();
    r.seconds = double(total.nsecsElapsed()) / 1e9;
    r.grownKb = residentKb() - before;
    r.shown = form.lineCount();
    r.gapMs = double(longestGapNs) / 1e6;
    form.ReadEnded = true;
    form.close();
    return r;
}

}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int lines = argc > 1 ? QByteArray(argv[1]).toInt() : 30000;
    const int serialLines = argc > 2 ? QByteArray(argv[2]).toInt() : 3000;
    const QDate day(2026, 3, 10);
    if (EmulatorProcess::program().isEmpty()) {
        std::fprintf(stderr, "fiscorda-emulator not found beside the benchmark\n");
        return 2;
    }
    QTemporaryDir dir;
    const QString paper = dir.filePath(QStringLiteral("paper.txt"));
    MsgBox::startRecording();
    bool ok = true;

    // 1. Loopback TCP.
    {
        const QString state = dir.filePath(QStringLiteral("tcp.json"));
        QProcess emulator;
        quint16 port = 0;
        if (writeState(state, lines, day))
            port = EmulatorProcess::startTcp(emulator, {QStringLiteral("--state"), state, QStringLiteral("--paper"), paper,
                                                        QStringLiteral("--journal-size"), QString::number(JournalKb)});
        KelvoProtocolControl control;
        if (!port || !OpenControl(control, port)) {
            std::fprintf(stderr, "cannot start or reach the emulator\n");
            return 2;
        }
        gFPControl = &control;

        // The control alone, on the first lines of the same selection: what
        // the printer's round trips cost without any screen.
        const int rawCalls = qMin(lines, 3000);
        QElapsedTimer raw;
        raw.start();
        for (int i = 0; i < rawCalls; ++i)
            control.ReadDgfeByDate(1, 10, 3, 2026, 10, 3, 2026, i == 0);
        const double rawPerSecond = rawCalls / (double(raw.nsecsElapsed()) / 1e9);

        const Read r = readToScreen(app, day);
        std::printf("1. over loopback TCP, the emulator in its own process\n");
        std::printf("lines read          %d (of %d)\n", r.shown, lines);
        std::printf("total time          %.2f s (target under 5 s)\n", r.seconds);
        std::printf("lines per second    %.0f\n", r.shown / r.seconds);
        std::printf("longest gap         %.2f ms between two of %lld turns of the event loop (target 50 ms)\n",
                    r.gapMs, r.turns);
        std::printf("memory growth       %.1f MB (target under 30 MB)\n", double(r.grownKb) / 1024.0);
        std::printf("control alone       %.0f calls per second (%d calls, no screen)\n", rawPerSecond, rawCalls);
        const bool met = r.shown == lines && r.seconds < 5.0 && r.gapMs <= 50.0 && r.grownKb < 30 * 1024;
        std::printf("%s\n\n", met ? "targets met" : "TARGETS MISSED");
        ok &= met;
        gFPControl = nullptr;
        control.CloseTcp();
        emulator.terminate();
        emulator.waitForFinished(5000);
    }

    // 2. A pseudo-terminal at 115200 baud, paced.
    {
        const QString settings = QStringLiteral("115200,n,8,1");
        const QString state = dir.filePath(QStringLiteral("serial.json"));
        SetProgramFolderForTests(dir.path()); // where the control looks for COMn
        QProcess emulator;
        if (!writeState(state, serialLines, day)
            || !EmulatorProcess::start(emulator,
                                       {QStringLiteral("--tcp"), QStringLiteral("off"), QStringLiteral("--pty"), dir.path(),
                                        QStringLiteral("--com"), QStringLiteral("1"), QStringLiteral("--line"), settings,
                                        QStringLiteral("--real-speed"), QStringLiteral("--state"), state,
                                        QStringLiteral("--paper"), paper, QStringLiteral("--journal-size"),
                                        QString::number(JournalKb)},
                                       "serial:")) {
            std::fprintf(stderr, "cannot start the emulator on a pseudo-terminal\n");
            return 2;
        }
        KelvoProtocolControl control;
        if (!OpenControlOnCom1(control, settings)) {
            std::fprintf(stderr, "the control could not open COM1\n");
            return 2;
        }
        qsizetype bytes = 0;
        control.setTrafficObserver([&](KelvoProtocolControl::Direction, const QByteArray &b) { bytes += b.size(); });
        gFPControl = &control;
        const Read r = readToScreen(app, day);
        const double wire = double(bytes) * 10 / 115200;
        const double ratio = r.seconds / wire;
        std::printf("2. over a pseudo-terminal at %s, paced, the emulator in its own process\n", qPrintable(settings));
        std::printf("lines read          %d (of %d)\n", r.shown, serialLines);
        std::printf("bytes on the wire   %lld: %.2f s\n", qlonglong(bytes), wire);
        std::printf("total time          %.2f s, ratio %.3f (target at most 1.05)\n", r.seconds, ratio);
        std::printf("longest gap         %.2f ms between two of %lld turns of the event loop (target 50 ms)\n",
                    r.gapMs, r.turns);
        const bool met = r.shown == serialLines && ratio <= 1.05 && r.gapMs <= 50.0;
        std::printf("%s\n\n", met ? "targets met" : "TARGETS MISSED");
        ok &= met;
        gFPControl = nullptr;
        control.CloseComPort();
        emulator.terminate();
        emulator.waitForFinished(5000);
    }

    double load[1] = {0};
    if (getloadavg(load, 1) == 1)
        std::printf("load average        %.1f on %d processors\n", load[0], QThread::idealThreadCount());
    const QStringList messages = MsgBox::shownTexts();
    if (!messages.isEmpty())
        std::printf("messages            %s\n", qPrintable(messages.join(QStringLiteral(" | "))));
    return ok ? 0 : 1;
}
