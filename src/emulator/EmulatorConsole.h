// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class ConsoleCommands;
class QSocketNotifier;

// Reads commands line by line from standard input while the event loop runs
// and prints their answers. At the end of the input it just stops reading:
// an emulator started with its input closed keeps running.
class EmulatorConsole : public QObject
{
    Q_OBJECT
public:
    EmulatorConsole(ConsoleCommands &commands, QObject *parent = nullptr);

Q_SIGNALS:
    void quitRequested();

private:
    void onReadable();

    ConsoleCommands &m_commands;
    QSocketNotifier *m_notifier = nullptr;
    QByteArray m_buffer;
};
