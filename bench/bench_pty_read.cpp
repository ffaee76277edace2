// A whole programming read over a serial line at its real speed: the
// emulator on a pseudo-terminal paced at the line speed (--real-speed), the
// program's control on the other end, as with a printer on a serial port.
// Beside it, in the same run, the time the same bytes need on the wire (each
// byte its start bit, data bits, parity and stop bits at the line's speed,
// requests and answers one after the other). What is above that is the
// program's own cost.
//
//   bench_pty_read [speed]      (default 9600; at 9600 it takes about 45 s)

#include "ProgrammingRead.h"
#include "emulator/EmulatorServer.h"
#include "emulator/LineSettings.h"
#include "printer/KelvoProtocolControl.h"
#include "settings/ProgramFolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int speed = argc > 1 ? atoi(argv[1]) : 9600;
    const QString settings = QStringLiteral("%1,n,8,1").arg(speed);
    const std::optional<LineSettings> line = LineSettings::parse(settings);
    if (!line) {
        fprintf(stderr, "not a line speed: %s\n", argc > 1 ? argv[1] : "");
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
        return 1;
    }
    KelvoProtocolControl control;
    control.setEuroSettings(2);
    control.setUseTcp(0);
    control.setComPort(1);
    control.setComSettings(settings);
    control.OpenComPort();
    if (!control.IsComPortOpen()) {
        fprintf(stderr, "the control could not open %s\n", qPrintable(emu.ptyLink()));
        return 1;
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
    printf("ratio             : %.3f (target at most 1.10) %s\n", ratio, ratio <= 1.1 ? "met" : "NOT MET");
    return 0;
}
