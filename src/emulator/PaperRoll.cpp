#include "PaperRoll.h"

static constexpr int TailLines = 200;

bool PaperRoll::open(const QString &path, QString *error)
{
    m_file.close();
    if (path.isEmpty())
        return true;
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        if (error)
            *error = QStringLiteral("cannot open the paper roll %1: %2").arg(path, m_file.errorString());
        return false;
    }
    return true;
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
