// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class EmulatorServer;

// The technician's commands to a running emulator, typed on its standard
// input or given on its command line: power, paper, journal, line faults,
// status. run() executes one line and returns what to show.
class ConsoleCommands
{
public:
    explicit ConsoleCommands(EmulatorServer &server) : m_server(server) {}
    QString run(const QString &line);
    bool quitRequested() const { return m_quit; }
    static QString help();

private:
    QString wireFault(const QString &name, const QString &arg);

    EmulatorServer &m_server;
    bool m_quit = false;
};
