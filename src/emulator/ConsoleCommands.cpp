// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleCommands.h"

#include "EmulatorServer.h"

#include <QStringList>

QString ConsoleCommands::help()
{
    return QStringLiteral(
        "status                    printer, receipt, journal, faults, connections\n"
        "power off|on              off drops the connections, refuses new ones, hangs up the COM port\n"
        "paper out|in              receipt paper end (ErrorCode 2 on anything that prints)\n"
        "offline on|off            printer offline (ErrorCode 3 on anything that prints)\n"
        "journal ok|nearfull|full|toformat|othermf\n"
        "                          the electronic journal's condition (full, toformat, othermf: ErrorCode 1)\n"
        "slow <ms>|off             wait before every answer (beyond TimeoutOp: result 8)\n"
        "nak [on|off|<n>]          answer requests with NAK (three times: result 7)\n"
        "noack [on|off|<n>]        ignore requests altogether (result 7)\n"
        "ackonly [on|off|<n>]      ACK, then no answer (result 8)\n"
        "cut [on|off|<n>]          stop the answer in the middle (result 3)\n"
        "badsum [on|off|<n>]       answer with a wrong checksum (result 4)\n"
        "stale [on|off|<n>]        send an old answer of another SEQ first (the control discards it)\n"
        "clear                     all line faults off\n"
        "roll [<n>]                the last n lines of the paper (default 20)\n"
        "save                      write the state file now\n"
        "help                      this list\n"
        "quit                      end the emulator\n"
        "<n> applies a fault to the next n requests only; 'on' to every request.\n");
}

static QString onOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

QString ConsoleCommands::run(const QString &line)
{
    const QStringList w = line.simplified().toLower().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (w.isEmpty())
        return {};
    const QString cmd = w[0];
    const QString arg = w.value(1);
    PrinterModel &model = m_server.model();

    if (cmd == QLatin1String("help") || cmd == QLatin1String("?"))
        return help();
    if (cmd == QLatin1String("quit") || cmd == QLatin1String("exit")) {
        m_quit = true;
        return QStringLiteral("bye");
    }
    if (cmd == QLatin1String("status")) {
        return model.describe()
               + QStringLiteral("power     %1; connections %2\nfaults    %3\nswitches  paper %4, offline %5\n")
                     .arg(onOff(m_server.isPowered()))
                     .arg(m_server.connectionCount())
                     .arg(m_server.faults().describe(), model.context().paperOut ? QStringLiteral("out") : QStringLiteral("in"),
                          onOff(model.context().offline));
    }
    if (cmd == QLatin1String("power") && (arg == QLatin1String("on") || arg == QLatin1String("off"))) {
        m_server.setPower(arg == QLatin1String("on"));
        return QStringLiteral("power %1").arg(arg);
    }
    if (cmd == QLatin1String("paper") && (arg == QLatin1String("out") || arg == QLatin1String("in"))) {
        model.setPaperOut(arg == QLatin1String("out"));
        return QStringLiteral("paper %1").arg(arg);
    }
    if (cmd == QLatin1String("offline") && (arg.isEmpty() || arg == QLatin1String("on") || arg == QLatin1String("off"))) {
        model.setOffline(arg != QLatin1String("off"));
        return QStringLiteral("offline %1").arg(onOff(arg != QLatin1String("off")));
    }
    if (cmd == QLatin1String("online")) {
        model.setOffline(false);
        return QStringLiteral("offline off");
    }
    if (cmd == QLatin1String("journal")) {
        const auto c = ElectronicJournal::conditionFromName(arg);
        if (!c)
            return QStringLiteral("journal: expected ok, nearfull, full, toformat or othermf");
        model.setJournalCondition(*c);
        if (model.takeChanged())
            m_server.saveNow();
        return QStringLiteral("journal %1").arg(arg);
    }
    if (cmd == QLatin1String("slow")) {
        bool ok = false;
        const int ms = arg.toInt(&ok);
        if (arg == QLatin1String("off") || (ok && ms >= 0)) {
            m_server.faults().slowMs = ok ? ms : 0;
            return QStringLiteral("slow %1 ms").arg(m_server.faults().slowMs);
        }
        return QStringLiteral("slow: expected milliseconds or off");
    }
    if (FaultSwitches::fromName(cmd))
        return wireFault(cmd, arg);
    if (cmd == QLatin1String("clear")) {
        m_server.faults().clear();
        return QStringLiteral("line faults cleared");
    }
    if (cmd == QLatin1String("roll")) {
        const int n = arg.isEmpty() ? 20 : qMax(1, arg.toInt());
        const QStringList tail = model.context().roll.tail();
        return tail.mid(qMax<qsizetype>(0, tail.size() - n)).join(QLatin1Char('\n')) + QLatin1Char('\n');
    }
    if (cmd == QLatin1String("save")) {
        QString why;
        return m_server.compactNow(&why) ? QStringLiteral("saved") : QStringLiteral("not saved: ") + why;
    }
    return QStringLiteral("unknown command '%1' (help lists them)").arg(line.trimmed());
}

QString ConsoleCommands::wireFault(const QString &name, const QString &arg)
{
    const auto fault = *FaultSwitches::fromName(name);
    int count = FaultSwitches::Always;
    if (arg == QLatin1String("off")) {
        count = 0;
    } else if (!arg.isEmpty() && arg != QLatin1String("on")) {
        bool ok = false;
        count = arg.toInt(&ok);
        if (!ok || count < 0)
            return QStringLiteral("%1: expected on, off or a number of requests").arg(name);
    }
    m_server.faults().set(fault, count);
    return QStringLiteral("faults: %1").arg(m_server.faults().describe());
}
