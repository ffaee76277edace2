// SPDX-License-Identifier: GPL-3.0-or-later
// A whole programming read over a serial line at its real speed: the
// emulator on a pseudo-terminal paced at the line speed (--real-speed), the
// program's control on the other end, as with a printer on a serial port.
// Beside it, in the same run, the time the same bytes need on the wire (each
// byte its start bit, data bits, parity and stop bits at the line's speed,
// requests and answers one after the other). What is above that is the
// program's own cost.
//
//   bench_pty_read [speed...]   (default 9600 19200 38400 57600 115200; at 9600
//                                it takes about 45 s, all five about 95 s)
//
// Target: each speed within 1.05 x the wire time. Exit status 1 when missed.

#include "ProgrammingRead.h"
#include "BenchLink.h"
#include "emulator/EmulatorServer.h"
#include "emulator/LineSettings.h"
#include "printer/KelvoProtocolControl.h"
#include "settings/ProgramFolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

// The read at one speed: 0 met, 1 missed, 2 could not run.
static int readAt(int speed)
{
    const QString settings = QStringLiteral("%1,n,8,1").arg(speed);
    const std::optional<LineSettings> line = LineSettings::parse(settings);
    if (!line) {
        fprintf(stderr, "not a line speed: %d\n", speed);
        return 2;
    }

    QTemporaryDir folder;
    SetProgramFolderForTests(folder.path()); // where the control looks for COMn
    EmulatorConfig config;
    config.tcp = false;
    config.realLineSpeed = true;
    EmulatorServer emu{config};
    QString error;
    if (!emu.start(&error) || !emu.openPty(folder.path(), 1, settings, &error)) {
        fprintf(stderr, "emulator: %s\n", qPrintable(error));
        return 2;
    }
    KelvoProtocolControl control;
    if (!OpenControlOnCom1(control, settings)) {
        fprintf(stderr, "the control could not open %s\n", qPrintable(emu.ptyLink()));
        return 2;
    }

    qsizetype sent = 0, received = 0;
    control.setTrafficObserver([&](KelvoProtocolControl::Direction d, const QByteArray &bytes) {
        (d == KelvoProtocolControl::Direction::Sent ? sent : received) += bytes.size();
    });
    QElapsedTimer t;
    t.start();
    const int calls = programmingRead(control);
    const double elapsed = t.nsecsElapsed() / 1e9;

    const double wire = double(sent + received) * line->bitsPerCharacter() / speed;
    const double ratio = elapsed / wire;
    printf("programming read at %s: %d calls, %lld bytes sent, %lld bytes received\n", qPrintable(settings), calls,
           qlonglong(sent), qlonglong(received));
    printf("bytes on the wire : %.2f s (%.0f bits a byte)\n", wire, line->bitsPerCharacter());
    printf("whole read        : %.2f s, %.2f ms a call above the wire\n", elapsed, (elapsed - wire) * 1000 / calls);
    printf("ratio             : %.3f (target at most 1.05) %s\n\n", ratio, ratio <= 1.05 ? "met" : "NOT MET");
    fflush(stdout);
    return ratio <= 1.05 ? 0 : 1;
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QList<int> speeds;
    for (int i = 1; i < argc; ++i)
        speeds << atoi(argv[i]);
    if (speeds.isEmpty())
        speeds = {9600, 19200, 38400, 57600, 115200};
    int worst = 0;
    for (int speed : speeds)
        worst = qMax(worst, readAt(speed));
    return worst;
}
