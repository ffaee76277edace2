// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaperRollView.h"

#include <QFontDatabase>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QPainter>
#include <QTextDocument>
#include <QTextObjectInterface>

namespace {

// A plain text view draws no pictures of its own: this draws a logo kept
// among the document's resources, at the size its format asks.
constexpr int LogoObject = QTextFormat::UserObject + 1;

class LogoHandler : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    using QObject::QObject;
    QSizeF intrinsicSize(QTextDocument *, int, const QTextFormat &format) override
    {
        return {format.doubleProperty(QTextFormat::ImageWidth), format.doubleProperty(QTextFormat::ImageHeight)};
    }
    void drawObject(QPainter *painter, const QRectF &rect, QTextDocument *doc, int, const QTextFormat &format) override
    {
        const QImage image = doc->resource(QTextDocument::ImageResource, QUrl(format.stringProperty(QTextFormat::ImageName))).value<QImage>();
        if (!image.isNull())
            painter->drawImage(rect, image);
    }
};

} // namespace

PaperRollView::PaperRollView(QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("rollView"));
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setMaximumBlockCount(MaxLines);
    m_logoHandler = new LogoHandler(this);
    document()->documentLayout()->registerHandler(LogoObject, m_logoHandler);
    document()->setDocumentMargin(12);
    QFont f = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    f.setStyleHint(QFont::Monospace);
    f.setPointSize(10);
    setFont(f);
    document()->setDefaultFont(f);
    // Thermal paper: warm white, the print a faded blue-black.
    setStyleSheet(QStringLiteral("QPlainTextEdit#rollView { background: #fbfaf4; color: #2b2f3a; "
                                 "border: 1px solid #c9c5b8; }"));
    setColumns(40);
}

void PaperRollView::setColumns(int columns)
{
    m_columns = columns;
    const int w = QFontMetrics(document()->defaultFont()).horizontalAdvance(QString(columns, QLatin1Char('M')));
    const int strip = w + 2 * int(document()->documentMargin()) + verticalScrollBar()->sizeHint().width() + 8;
    setMinimumWidth(strip);
    setMaximumWidth(strip + strip / 4); // a strip of paper, not a page
}

void PaperRollView::appendLines(const QStringList &lines)
{
    QList<Line> plain;
    plain.reserve(lines.size());
    for (const QString &l : lines)
        plain.append({l, 1});
    appendLines(plain);
}

void PaperRollView::appendLines(const QList<Line> &lines)
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
    // Plain lines go in runs, one insertion each: far cheaper than line by line.
    QString run;
    const auto putRun = [&] {
        if (run.isEmpty())
            return;
        c.movePosition(QTextCursor::End);
        c.setCharFormat(QTextCharFormat());
        c.insertText(run);
        run.clear();
    };
    for (qsizetype i = from; i < lines.size(); ++i) {
        const Line &l = lines[i];
        if (l.style <= 1 && !l.text.contains(QLatin1String("[ LOGO "))) {
            if (!m_lines.empty())
                run += QLatin1Char('\n');
            run += l.text;
            m_lines.push_back(l.text);
            continue;
        }
        putRun();
        appendOne(l.text, l.style);
    }
    putRun();
    c.endEditBlock();
    while (m_lines.size() > size_t(MaxLines))
        m_lines.pop_front();
    if (follow)
        bar->setValue(bar->maximum());
    else
        bar->setValue(keepAt);
}

void PaperRollView::appendOne(const QString &line, int style)
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
                QTextCharFormat img;
                img.setObjectType(LogoObject);
                img.setProperty(QTextFormat::ImageName, name);
                // The printer's dots to the paper's columns: 384 dots fill a 48 mm line.
                const qreal full = QFontMetricsF(document()->defaultFont()).horizontalAdvance(QString(m_columns, QLatin1Char('M')));
                const qreal width = qMin<qreal>(full, full * picture.width() / 384.0);
                img.setProperty(QTextFormat::ImageWidth, width);
                img.setProperty(QTextFormat::ImageHeight, width * picture.height() / qMax(1, picture.width()));
                c.insertText(QString(QChar::ObjectReplacementCharacter), img);
                return;
            }
        }
    }

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

#include "PaperRollView.moc"
