// SPDX-License-Identifier: GPL-3.0-or-later
// The training printer's window under load: receipts rung up by the
// program's control (in a thread of its own, as the PC is a machine of its
// own) on the headless printer and then on the window's printer, and a
// journal print of 30 000 lines or more on the window. Prints the calls per
// second of both and their ratio, the longest gap between two turns of the
// window's event loop and how much the process grew with the window.
//
//   bench_printer_window [receipts]      (default 10000)
//
// Targets: window against headless at least 0.9 calls per second, no gap
// over 50 ms, growth under 50 MB. Exit status 1 when one is missed.

#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "emulator/window/PaperRollView.h"
#include "emulator/window/PrinterWindow.h"
#include "printer/KelvoProtocolControl.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>

namespace {

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

// Runs work in a thread of its own while this thread's event loop turns;
// gives the longest time between two turns (a 2 ms timer).
double runBeside(const std::function<void()> &work)
{
    QThread *worker = QThread::create(work);
    QEventLoop loop;
    QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
    QElapsedTimer sinceTurn;
    qint64 longest = 0;
    QTimer tick;
    tick.setInterval(2);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        if (sinceTurn.isValid())
            longest = qMax(longest, sinceTurn.nsecsElapsed());
        sinceTurn.start();
    });
    tick.start();
    sinceTurn.start();
    worker->start();
    loop.exec();
    longest = qMax(longest, sinceTurn.nsecsElapsed());
    worker->wait();
    delete worker;
    return double(longest) / 1e6;
}

// One sale paid in cash, over the control: two calls. Gives the seconds.
double ringReceipts(KelvoProtocolControl &control, int receipts, int &failures)
{
    QElapsedTimer t;
    t.start();
    for (int i = 0; i < receipts; ++i) {
        int16_t op = 1;
        failures += control.SellReparto(op, 1.0f, QStringLiteral("CAFFE"), Currency::fromScaled(12000), 1, 1) != 0;
        failures += control.PayReceipt(op, QString(), Currency::fromScaled(20000), 0, 0, 1) != 0;
    }
    return double(t.nsecsElapsed()) / 1e9;
}

quint16 freePort()
{
    for (quint16 port = quint16(24000 + QCoreApplication::applicationPid() % 5000); port < 32767; ++port) {
        QTcpServer probe;
        if (probe.listen(QHostAddress::LocalHost, port))
            return port;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true); // the window's settings stay out of the user's
    const int receipts = argc > 1 ? QByteArray(argv[1]).toInt() : 10000;
    QTemporaryDir scratch;

    // Both printers alike: no state file (saving the growing memory after
    // every receipt would measure the disk), a paper file, a journal that
    // holds everything. The headless one runs in a thread of its own as in
    // its own program, the window's in the window's printer thread, while
    // this thread turns the window's event loop; the receipts go
    // to one and the other in turns, so that the machine's other work falls
    // on both alike.
    EmulatorConfig config;
    config.journalKb = 256 * 1024;
    config.paperPath = scratch.filePath(QStringLiteral("headless-paper.txt"));
    QThread headlessThread;
    headlessThread.start();
    auto *headlessAnchor = new QObject;
    headlessAnchor->moveToThread(&headlessThread);
    std::unique_ptr<EmulatorServer> emu;
    quint16 headlessPort = 0;
    QMetaObject::invokeMethod(headlessAnchor, [&] {
        emu = std::make_unique<EmulatorServer>(config);
        emu->start();
        emu->model().memory().journal.capacity = qint64(config.journalKb) * 1024;
        headlessPort = ListenForControl(*emu);
    }, Qt::BlockingQueuedConnection);

    WindowSettings settings;
    settings.keepMemory = false;
    settings.paperPath = scratch.filePath(QStringLiteral("window-paper.txt"));
    settings.tcpPort = freePort();
    PrinterWindow window(settings);
    window.resize(1100, 760);
    window.show();
    app.processEvents();
    if (!window.isRunning()) {
        std::fprintf(stderr, "the window's printer did not start: %s\n", qPrintable(window.message()));
        return 2;
    }
    const auto linesPrinted = [&window] {
        qint64 n = 0;
        window.withPrinter([&n](EmulatorServer &p) { n = p.model().context().roll.linesPrinted(); });
        return n;
    };
    window.withPrinter([&config](EmulatorServer &p) { p.model().memory().journal.capacity = qint64(config.journalKb) * 1024; });

    const long before = residentKb();
    const int rounds = 10;
    double headlessSeconds = 0, windowSeconds = 0;
    int headlessFailures = 0, windowFailures = 0;
    const double receiptGap = runBeside([&] {
        KelvoProtocolControl toHeadless, toWindow;
        if (!OpenControl(toHeadless, headlessPort) || !OpenControl(toWindow, settings.tcpPort)) {
            headlessFailures = windowFailures = 1;
            return;
        }
        int ignored = 0;
        ringReceipts(toHeadless, 200, ignored); // warm up both roads, uncounted
        ringReceipts(toWindow, 200, ignored);
        for (int r = 0; r < rounds; ++r) {
            headlessSeconds += ringReceipts(toHeadless, receipts / rounds, headlessFailures);
            windowSeconds += ringReceipts(toWindow, receipts / rounds, windowFailures);
        }
        toHeadless.CloseTcp();
        toWindow.CloseTcp();
    });
    const int rung = receipts / rounds * rounds;
    struct { double callsPerSecond; int failures; } headless{2.0 * rung / headlessSeconds, headlessFailures},
        windowed{2.0 * rung / windowSeconds, windowFailures};

    // The journal print: enough of today's receipts for 30 000 lines.
    const qint64 printedBefore = linesPrinted();
    const double perReceipt = double(printedBefore) / (rung + 200);
    const int lastReceipt = qMin(rung + 200, int(33000 / qMax(1.0, 0.75 * perReceipt)) + 1);
    int16_t printResult = -99;
    QElapsedTimer printTime;
    printTime.start();
    const double printGap = runBeside([&] {
        KelvoProtocolControl control;
        OpenControl(control, settings.tcpPort);
        control.setTimeoutOp(120);
        const QDate today = QDate::currentDate();
        printResult = control.PrintDgfeByNumber(1, int16_t(today.day()), int16_t(today.month()),
                                                int16_t(today.year() % 100), 1, int16_t(lastReceipt));
        control.CloseTcp();
    });
    const double printSeconds = double(printTime.nsecsElapsed()) / 1e9;
    const qint64 printedLines = linesPrinted() - printedBefore;
    // The roll catches up with the print at its own pace.
    QElapsedTimer drain;
    drain.start();
    while (drain.elapsed() < 2000)
        app.processEvents(QEventLoop::AllEvents, 20);
    const long grown = residentKb() - before;
    QStringList paperTail;
    {
        QFile paper(settings.paperPath);
        if (paper.open(QIODevice::ReadOnly))
            paperTail = QString::fromUtf8(paper.readAll()).split(QLatin1Char('\n'));
        if (!paperTail.isEmpty() && paperTail.last().isEmpty())
            paperTail.removeLast();
        paperTail = paperTail.mid(qMax<qsizetype>(0, paperTail.size() - PaperRollView::MaxLines));
    }
    const bool rollAsPaper = window.roll()->lines() == paperTail;

    const double ratio = headless.callsPerSecond > 0 ? windowed.callsPerSecond / headless.callsPerSecond : 0;
    const double gap = qMax(receiptGap, printGap);
    std::printf("receipts            %d on each printer (2 calls each), failures %d / %d\n", receipts,
                headless.failures, windowed.failures);
    std::printf("headless            %.0f calls per second\n", headless.callsPerSecond);
    std::printf("window              %.0f calls per second\n", windowed.callsPerSecond);
    std::printf("window / headless   %.2f   (target >= 0.90)\n", ratio);
    std::printf("journal print       %lld lines in %.2f s, result %d\n", printedLines, printSeconds, printResult);
    std::printf("longest gap         %.1f ms while ringing, %.1f ms while printing the journal   (target <= 50)\n",
                receiptGap, printGap);
    std::printf("lines on screen     %lld (bound %d), the newest as on the paper file: %s\n",
                qint64(window.roll()->lines().size()), PaperRollView::MaxLines,
                rollAsPaper ? "yes" : "NO");
    std::printf("memory growth       %.1f MB   (target < 50; both printers' journals included)\n", double(grown) / 1024.0);
    double load[1] = {0};
    if (getloadavg(load, 1) == 1)
        std::printf("load average        %.1f on %d processors\n", load[0], QThread::idealThreadCount());

    QMetaObject::invokeMethod(headlessAnchor, [&] {
        emu.reset();
        delete headlessAnchor;
    }, Qt::BlockingQueuedConnection);
    headlessThread.quit();
    headlessThread.wait();

    const bool ok = rollAsPaper && headless.failures == 0 && windowed.failures == 0 && ratio >= 0.9 && gap <= 50.0
                    && grown < 50 * 1024 && printResult == 0 && printedLines >= 30000;
    std::printf("%s\n", ok ? "targets met" : "TARGETS MISSED");
    return ok ? 0 : 1;
}
