// SPDX-License-Identifier: GPL-3.0-or-later
#include "DeclarationPage.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

namespace {

QFont pageFont(int points, bool bold)
{
    // Courier New where it exists; its metric twin (Liberation Mono) or
    // another typewriter face elsewhere. Only a fixed pitch keeps the table.
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::TypeWriter, QFont::PreferMatch);
    font.setFixedPitch(true);
    font.setPointSize(points);
    font.setBold(bold);
    return font;
}

}

void DeclarationPage::drawOnPaper(const QList<PageStep> &steps, QPainter &painter, const QRectF &page,
                                  const std::function<bool()> &newPage)
{
    int size = 12;
    bool bold = false;
    double y = page.top();
    bool stopped = false;

    // Makes room for height below y, on a new page when this one is full.
    auto room = [&](double height) {
        if (y + height <= page.bottom() || y == page.top())
            return true;
        if (!newPage()) {
            stopped = true;
            return false;
        }
        y = page.top();
        return true;
    };

    for (const PageStep &step : steps) {
        if (stopped)
            return;
        switch (step.kind) {
        case PageStep::Kind::FontSize: size = step.value; break;
        case PageStep::Kind::Bold: bold = step.value != 0; break;
        case PageStep::Kind::Gap: {
            const QFontMetricsF gapMetrics(pageFont(step.value, false), painter.device());
            const double height = 2 * gapMetrics.lineSpacing();
            if (y + height > page.bottom())
                y = page.bottom(); // a gap at the foot of a page is not carried over
            else
                y += height;
            break;
        }
        case PageStep::Kind::Line: {
            const QFont font = pageFont(size, bold);
            painter.setFont(font);
            const QFontMetricsF metrics(font, painter.device());
            const double charWidth = metrics.horizontalAdvance(QLatin1Char('M'));
            const int perLine = std::max(1, int(page.width() / charWidth));
            QString rest = step.text;
            do {
                if (!room(metrics.lineSpacing()))
                    return;
                painter.drawText(QPointF(page.left(), y + metrics.ascent()), rest.left(perLine));
                y += metrics.lineSpacing();
                rest = rest.mid(perLine);
            } while (!rest.isEmpty());
            break;
        }
        }
    }
}
