// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrafficLog.h"

#include "AppendFile.h"

#include "settings/Cp1252.h"

#include <QDateTime>

bool TrafficLog::open(const QString &path, QString *error)
{
    return openForAppend(m_file, path, QStringLiteral("traffic log"), error);
}

QString TrafficLog::hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QString TrafficLog::text(const QByteArray &bytes)
{
    static const char *names[32] = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS", "HT", "LF",
                                    "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
                                    "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};
    QString out;
    for (char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 32)
            out += QLatin1Char('<') + QLatin1String(names[b]) + QLatin1Char('>');
        else if (b == 0x7F)
            out += QStringLiteral("<DEL>");
        else
            out += Cp1252::decode(QByteArray(1, c));
    }
    return out;
}

void TrafficLog::bytes(const QString &peer, Direction d, const QByteArray &bytes, const QString &note)
{
    if (!isWatched())
        return;
    QString l = QStringLiteral("%1 %2 %3 ").arg(QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss.zzz")),
                                                peer, d == Direction::In ? QStringLiteral("PC>PRN")
                                                                         : QStringLiteral("PRN>PC"));
    l += hex(bytes) + QStringLiteral(" | ") + text(bytes);
    if (!note.isEmpty())
        l += QStringLiteral("   (") + note + QLatin1Char(')');
    line(l);
}

void TrafficLog::event(const QString &peer, const QString &text)
{
    if (!isWatched())
        return;
    line(QStringLiteral("%1 %2 -- %3").arg(QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss.zzz")), peer, text));
}

void TrafficLog::line(const QString &text)
{
    if (m_file.isOpen()) {
        m_file.write(text.toUtf8());
        m_file.write("\n");
        m_file.flush();
    }
    if (onLine)
        onLine(text);
}
