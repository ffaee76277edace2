// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"

#include <QCoreApplication>

// The emulator listening on a free loopback port the control can take: its
// TcpPort is a 16-bit Integer, so the port stays below 32768. 0 when none.
inline quint16 ListenForControl(EmulatorServer &emu)
{
    for (quint16 port = quint16(20000 + QCoreApplication::applicationPid() % 5000); port < 32767; ++port)
        if (emu.listenTcp(QHostAddress::LocalHost, port))
            return port;
    return 0;
}

// The control as the start-up leaves it (amounts of two decimals), opened
// over TCP to the emulator on this machine.
inline bool OpenControl(KelvoProtocolControl &control, quint16 port)
{
    control.setEuroSettings(2);
    control.setUseTcp(1);
    control.setIpAddress(QStringLiteral("127.0.0.1"));
    control.setTcpPort(int16_t(port));
    return control.OpenTcp() == 0;
}

// The same, opened on serial port 1 (the emulator's COM1 link beside the
// program) at the given line settings.
inline bool OpenControlOnCom1(KelvoProtocolControl &control, const QString &settings)
{
    control.setEuroSettings(2);
    control.setUseTcp(0);
    control.setComPort(1);
    control.setComSettings(settings);
    control.OpenComPort();
    return control.IsComPortOpen();
}
