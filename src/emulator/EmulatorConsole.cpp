// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmulatorConsole.h"

#include "ConsoleCommands.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

EmulatorConsole::EmulatorConsole(ConsoleCommands &commands, QObject *parent) : QObject(parent), m_commands(commands)
{
    m_notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &EmulatorConsole::onReadable);
}

void EmulatorConsole::onReadable()
{
    char buf[1024];
    const ssize_t n = ::read(STDIN_FILENO, buf, sizeof buf);
    if (n < 0 && errno == EINTR)
        return;
    if (n <= 0) {
        m_notifier->setEnabled(false); // end of input: no console any more
        return;
    }
    m_buffer.append(buf, n);
    qsizetype nl;
    while ((nl = m_buffer.indexOf('\n')) >= 0) {
        const QString line = QString::fromLocal8Bit(m_buffer.left(nl));
        m_buffer.remove(0, nl + 1);
        const QString answer = m_commands.run(line);
        if (!answer.isEmpty()) {
            const QByteArray out = answer.endsWith(QLatin1Char('\n')) ? answer.toLocal8Bit() : (answer + QLatin1Char('\n')).toLocal8Bit();
            fwrite(out.constData(), 1, size_t(out.size()), stdout);
            fflush(stdout);
        }
        if (m_commands.quitRequested()) {
            Q_EMIT quitRequested();
            return;
        }
    }
}
