// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaperRoll.h"

#include "AppendFile.h"

static constexpr int TailLines = 200;

bool PaperRoll::open(const QString &path, QString *error)
{
    return openForAppend(m_file, path, QStringLiteral("paper roll"), error);
}

void PaperRoll::print(const QString &line)
{
    ++m_lines;
    m_tail.append(line);
    if (m_tail.size() > TailLines)
        m_tail.removeFirst();
    if (m_file.isOpen()) {
        m_file.write(line.toUtf8());
        m_file.write("\n");
        m_file.flush();
    }
    if (onLine)
        onLine(line);
}

void PaperRoll::print(const QStringList &lines)
{
    for (const QString &l : lines)
        print(l);
}

void PaperRoll::cut(int width)
{
    print(QString());
    print(QString(width, QLatin1Char('~')));
    print(QString());
}
