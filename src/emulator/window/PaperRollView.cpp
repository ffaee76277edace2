// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaperRollView.h"

#include <QFontDatabase>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

PaperRollView::PaperRollView(QWidget *parent) : QTextEdit(parent)
{
    setObjectName(QStringLiteral("rollView"));
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setLineWrapMode(QTextEdit::FixedColumnWidth);
    document()->setMaximumBlockCount(MaxLines);
    document()->setDocumentMargin(12);
    QFont f = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    f.setStyleHint(QFont::Monospace);
    f.setPointSize(10);
    setFont(f);
    document()->setDefaultFont(f);
    // Thermal paper: warm white, the print a faded blue-black.
    setStyleSheet(QStringLiteral("QTextEdit#rollView { background: #fbfaf4; color: #2b2f3a; "
                                 "border: 1px solid #c9c5b8; }"));
    setColumns(40);
}

void PaperRollView::setColumns(int columns)
{
    m_columns = columns;
    setLineWrapColumnOrWidth(columns);
    const int w = QFontMetrics(document()->defaultFont()).horizontalAdvance(QString(columns, QLatin1Char('M')));
    setMinimumWidth(w + 2 * int(document()->documentMargin()) + verticalScrollBar()->sizeHint().width() + 8);
}

void PaperRollView::appendLines(const QStringList &lines)
{
    if (lines.isEmpty())
        return;
    QScrollBar *bar = verticalScrollBar();
    const bool follow = bar->value() >= bar->maximum() - 4;
    const int keepAt = bar->value();
    // Only the newest MaxLines can stay on screen: older ones are not laid out at all.
    const qsizetype from = qMax<qsizetype>(0, lines.size() - MaxLines);
    QTextCursor c(document());
    c.beginEditBlock();
    for (qsizetype i = from; i < lines.size(); ++i)
        appendOne(lines[i]);
    c.endEditBlock();
    while (m_lines.size() > size_t(MaxLines))
        m_lines.pop_front();
    if (follow)
        bar->setValue(bar->maximum());
    else
        bar->setValue(keepAt);
}

void PaperRollView::appendOne(const QString &line)
{
    m_lines.push_back(line);
    QTextCursor c(document());
    c.movePosition(QTextCursor::End);
    if (m_lines.size() > 1)
        c.insertBlock();
    QTextBlockFormat bf;
    QTextCharFormat cf;
    cf.setFont(document()->defaultFont());

    static const QRegularExpression logo(QStringLiteral("^\\s*\\[ LOGO (\\d+) \\]\\s*$"));
    if (logoPicture) {
        const auto m = logo.match(line);
        if (m.hasMatch()) {
            const QImage picture = logoPicture(m.captured(1).toInt());
            if (!picture.isNull()) {
                const QString name = QStringLiteral("logo://%1").arg(++m_logoCount);
                document()->addResource(QTextDocument::ImageResource, QUrl(name), picture);
                bf.setAlignment(Qt::AlignHCenter);
                c.setBlockFormat(bf);
                QTextImageFormat img;
                img.setName(name);
                // The printer's dots to the paper's columns: 384 dots fill a 48 mm line.
                const qreal full = QFontMetricsF(document()->defaultFont()).horizontalAdvance(QString(m_columns, QLatin1Char('M')));
                img.setWidth(qMin<qreal>(full, full * picture.width() / 384.0));
                img.setHeight(img.width() * picture.height() / qMax(1, picture.width()));
                c.insertImage(img);
                return;
            }
        }
    }

    const int style = m_styles.value(line, 1);
    QString shown = line;
    if (style >= 3) {
        // The printer spaces the letters on the file; on paper they are
        // letters twice as wide and tall.
        const QString spaced = line.trimmed();
        QString letters;
        for (qsizetype i = 0; i < spaced.size(); i += 2)
            letters += spaced[i];
        shown = QString(qMax<qsizetype>(0, (m_columns / 2 - letters.size()) / 2), QLatin1Char(' ')) + letters;
        QFont f = cf.font();
        f.setPointSizeF(f.pointSizeF() * 2);
        cf.setFont(f);
    }
    if (style == 2 || style == 4)
        cf.setFontWeight(QFont::Bold);
    c.setBlockFormat(bf);
    c.setCharFormat(cf);
    c.insertText(shown, cf);
}

void PaperRollView::clearRoll()
{
    m_lines.clear();
    clear();
}

QString PaperRollView::text() const
{
    QString out;
    for (const QString &l : m_lines)
        out += l + QLatin1Char('\n');
    return out;
}
