// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QStringList>
#include <functional>

// The paper that comes out of the printer: a text file (UTF-8) that grows
// line by line and is flushed at every line, so that it can be watched while
// the emulator runs (tail -f). Without a file the lines are only counted.
class PaperRoll
{
public:
    bool open(const QString &path, QString *error);
    void print(const QString &line);
    void print(const QStringList &lines);
    void cut(int width);          // the end of a document
    qint64 linesPrinted() const { return m_lines; }
    QStringList tail() const { return m_tail; } // the last lines, newest last

    // Called with every line as it is printed, after it is on the file (a
    // window that shows the roll).
    std::function<void(const QString &)> onLine;

private:
    QFile m_file;
    qint64 m_lines = 0;
    QStringList m_tail;
};
