// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QStringList>
#include <QPlainTextEdit>
#include <deque>
#include <functional>

// The paper as it comes out of the printer: a thermal-paper strip the width
// of the printer's columns, in a fixed-pitch face. Header lines of double
// width show as double letters, bold lines bold, and a logo line as the
// picture the printer prints there. It keeps only the newest MaxLines lines
// (the paper file keeps them all) and follows the newest one unless the
// reader scrolled back.
class PaperRollView : public QPlainTextEdit
{
    Q_OBJECT
public:
    static constexpr int MaxLines = 3000;

    explicit PaperRollView(QWidget *parent = nullptr);

    void setColumns(int columns);
    int columns() const { return m_columns; }

    // A printed line and how it is to be shown: 1 normal, 2 bold, 3 double,
    // 4 bold double (the header's styles).
    struct Line
    {
        QString text;
        int style = 1;
    };
    // The picture of logo n, or a null image when there is none.
    std::function<QImage(int)> logoPicture;

    void appendLines(const QList<Line> &lines);
    void appendLines(const QStringList &lines);
    QStringList lines() const { return {m_lines.begin(), m_lines.end()}; } // as the paper file has them
    void clearRoll();
    QString text() const;

private:
    void appendOne(const QString &line, int style);

    int m_columns = 40;
    std::deque<QString> m_lines;
    int m_logoCount = 0;
    QObject *m_logoHandler = nullptr;
};
