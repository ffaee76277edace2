// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>
#include <functional>

// The traffic log: one line per frame and per control byte, with the time,
// the connection, the direction, the bytes in hex and as text.
//   10:05:00.123 tcp 127.0.0.1:50412 PC>PRN 02 30 52 65 ... | <STX>0ReadDateTime<ETX>04BC
class TrafficLog
{
public:
    bool open(const QString &path, QString *error);
    bool isOpen() const { return m_file.isOpen(); }
    bool isWatched() const { return m_file.isOpen() || bool(onLine); }

    enum class Direction { In, Out };
    void bytes(const QString &peer, Direction d, const QByteArray &bytes, const QString &note = {});
    void event(const QString &peer, const QString &text);

    static QString hex(const QByteArray &bytes);
    static QString text(const QByteArray &bytes);

    // Called with every line of the log, with or without a file (a window
    // that shows the traffic).
    std::function<void(const QString &)> onLine;

private:
    void line(const QString &text);
    QFile m_file;
};
