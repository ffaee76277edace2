// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>

// The emulator as users run it: a process of its own, so that what a
// benchmark measures does not hang on how the scheduler places two threads
// of one process.
namespace EmulatorProcess {

inline QString program()
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const QString &p : {QStringLiteral("fiscorda-emulator"), QStringLiteral("../bin/fiscorda-emulator")})
        if (QFileInfo::exists(here.filePath(p)))
            return here.filePath(p);
    return {};
}

// Starts it with these options and waits until it says `ready`.
inline bool start(QProcess &proc, const QStringList &args, const QByteArray &ready)
{
    proc.setProcessChannelMode(QProcess::MergedChannels);
    proc.start(program(), args);
    QByteArray out;
    while (!out.contains(ready) && proc.waitForReadyRead(5000))
        out += proc.readAll();
    if (out.contains(ready))
        return true;
    proc.kill();
    proc.waitForFinished();
    return false;
}

// Listening on loopback TCP on a free port the control can take (below
// 32768); 0 when it would not come up.
inline quint16 startTcp(QProcess &proc, const QStringList &args)
{
    for (int attempt = 0; attempt < 20; ++attempt) {
        const quint16 port = quint16(20000 + QRandomGenerator::global()->bounded(12000));
        if (start(proc, QStringList{QStringLiteral("--tcp"), QStringLiteral("127.0.0.1:%1").arg(port)} + args,
                  "listening on"))
            return port;
    }
    return 0;
}

// A field of /proc/<pid>/<file> ("VmRSS:", "wchar:"), as a number.
inline qint64 procField(qint64 pid, const char *file, const QByteArray &key)
{
    QFile f(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(file)));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : f.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').value(0).toLongLong();
    return 0;
}

}
