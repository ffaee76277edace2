// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Header only: it needs the emulator, which only the end-to-end tests link.
#include "FormTestEnv.h"
#include "emulator/EmulatorServer.h"
#include "printer/KelvoProtocolControl.h"

#include <QCoreApplication>
#include <QDir>

// What an end-to-end test stands on: a FormTestEnv whose gFPControl is the
// real control, talking to the emulated printer that runs in this thread.
struct EmulatorTestEnv : FormTestEnv
{
    std::optional<EmulatorServer> emu;
    std::optional<KelvoProtocolControl> control;

    ~EmulatorTestEnv()
    {
        gFPControl = &fake;
        control.reset();
        emu.reset();
    }

    // A printer switched on (again, for a second call: its memory comes back
    // from the state file, when the config names one) and a new control for
    // it as gFPControl, with amounts of two decimals as the start-up leaves
    // them, not yet connected.
    bool start(const EmulatorConfig &config = EmulatorConfig())
    {
        gFPControl = &fake;
        control.reset();
        emu.emplace(config);
        if (!emu->start())
            return false;
        control.emplace();
        control->setEuroSettings(2);
        gFPControl = &*control;
        return true;
    }

    // The printer listening on a free loopback port, the control opened to it
    // over TCP. TcpPort is a 16-bit Integer: the port stays below 32768.
    bool connectTcp()
    {
        quint16 port = 20000 + QCoreApplication::applicationPid() % 5000;
        while (!emu->listenTcp(QHostAddress::LocalHost, port))
            if (++port >= 32767)
                return false;
        control->setUseTcp(1);
        control->setIpAddress(QStringLiteral("127.0.0.1"));
        control->setTcpPort(int16_t(port));
        return control->OpenTcp() == 0;
    }
    bool startOnTcp(const EmulatorConfig &config = EmulatorConfig()) { return start(config) && connectTcp(); }

    // The pictures and standard logos the installation ships, in the program folder.
    void linkShippedFiles() const
    {
        const QDir bin(QCoreApplication::applicationDirPath());
        for (const char *name : {"img", "LoghiStandard"})
            QFile::link(bin.filePath(name), folder.filePath(name));
    }

    // A request run on the printer's side, as if it came off the wire.
    Reply run(const char *name, const QList<QByteArray> &args) { return emu->execute(name, args); }
    QStringList roll() { return emu->model().context().roll.tail(); }
};
