// The journal read to the screen at full length: the real DGFECrtForm,
// offscreen, reading a journal of 30 000 lines from the emulator over
// loopback TCP through the program's control. The emulator runs in a thread
// of its own, as a printer is a device of its own. Prints the total time,
// the lines per second, the longest gap between two turns of the event loop
// that the read gives the screen, and how much the process grew.
//
//   bench_dgfe [lines]      (default 30000)
//
// Targets: 30 000 lines in under 5 s, no gap over 50 ms, growth under 30 MB.
// Exit status 1 when one is missed.

#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "journal/DGFECrtForm.h"
#include "journal/DGFEForm.h"
#include "printer/KelvoProtocolControl.h"
#include "ui/MsgBox.h"

#include <QApplication>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QThread>

#include <cstdio>
#include <cstdlib>

namespace {

// Resident memory of the process, in kB.
long residentKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return 0;
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

}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int lines = argc > 1 ? QByteArray(argv[1]).toInt() : 30000;
    const QDate day(2026, 3, 10);

    // The printer, in its own thread.
    QThread printerThread;
    printerThread.start();
    auto *anchor = new QObject;
    anchor->moveToThread(&printerThread);
    EmulatorServer *emu = nullptr;
    quint16 port = 0;
    QMetaObject::invokeMethod(
        anchor,
        [&] {
            EmulatorConfig config; // no state file, no paper: the journal is set directly
            config.journalKb = 64 * 1024;
            emu = new EmulatorServer(config);
            emu->start();
            emu->model().memory().journal.capacity = qint64(config.journalKb) * 1024;
            emu->model().memory().journal.setEntries(journalOf(lines, day));
            port = ListenForControl(*emu);
        },
        Qt::BlockingQueuedConnection);

    KelvoProtocolControl control;
    if (!OpenControl(control, port)) {
        std::fprintf(stderr, "cannot connect to the emulator\n");
        return 2;
    }
    gFPControl = &control;
    MsgBox::startRecording();

    // The control alone, on the first lines of the same selection: what the
    // printer's round trips cost without any screen.
    const int rawCalls = qMin(lines, 3000);
    QElapsedTimer raw;
    raw.start();
    for (int i = 0; i < rawCalls; ++i)
        control.ReadDgfeByDate(1, 10, 3, 2026, 10, 3, 2026, i == 0);
    const double rawPerSecond = rawCalls / (double(raw.nsecsElapsed()) / 1e9);

    DGFEForm selection;
    selection.dtInizio->setDate(day);
    selection.dtFine->setDate(day);
    DGFECrtForm::ByNumber = false;
    DGFECrtForm::FromDate = selection.dtInizio;
    DGFECrtForm::ToDate = selection.dtFine;
    DGFECrtForm form;
    form.show();
    app.processEvents();

    QElapsedTimer sinceTurn;
    qint64 longestGapNs = 0;
    qint64 turns = 0;
    form.onReadTurn = [&] {
        if (sinceTurn.isValid())
            longestGapNs = qMax(longestGapNs, sinceTurn.nsecsElapsed());
        sinceTurn.start();
        ++turns;
    };

    const long before = residentKb();
    QElapsedTimer total;
    total.start();
    form.Command1->click();
    const double seconds = double(total.nsecsElapsed()) / 1e9;
    const long grown = residentKb() - before;

    const int shown = form.lineCount();
    const double gapMs = double(longestGapNs) / 1e6;
    std::printf("lines read          %d (of %d)\n", shown, lines);
    std::printf("total time          %.2f s\n", seconds);
    std::printf("lines per second    %.0f\n", shown / seconds);
    std::printf("longest gap         %.2f ms between two of %lld turns of the event loop\n", gapMs, turns);
    std::printf("memory growth       %.1f MB\n", double(grown) / 1024.0);
    std::printf("control alone       %.0f calls per second (%d calls, no screen)\n", rawPerSecond, rawCalls);
    double load[1] = {0};
    if (getloadavg(load, 1) == 1)
        std::printf("load average        %.1f on %d processors\n", load[0], QThread::idealThreadCount());
    const QStringList messages = MsgBox::shownTexts();
    if (!messages.isEmpty())
        std::printf("messages            %s\n", qPrintable(messages.join(QStringLiteral(" | "))));

    const bool ok = shown == lines && seconds < 5.0 && gapMs <= 50.0 && grown < 30 * 1024;
    std::printf("%s\n", ok ? "targets met" : "TARGETS MISSED");

    form.ReadEnded = true;
    form.close();
    gFPControl = nullptr;
    control.CloseTcp();
    QMetaObject::invokeMethod(anchor, [&] { delete emu; }, Qt::BlockingQueuedConnection);
    anchor->deleteLater();
    printerThread.quit();
    printerThread.wait();
    return ok ? 0 : 1;
}
