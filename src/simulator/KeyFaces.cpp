// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeyFaces.h"

#include <QFont>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <functional>

namespace KeyFaces {

namespace {

const QColor Plain(0xe8, 0xe8, 0xe8);

// Draws a face in a Size x Size square, whatever the size and pixel ratio
// it is asked for, instead of scaling one bitmap.
using Drawing = std::function<void(QPainter &)>;

class FaceEngine : public QIconEngine
{
public:
    explicit FaceEngine(Drawing draw) : m_draw(std::move(draw)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / qreal(Size), rect.height() / qreal(Size));
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setRenderHint(QPainter::TextAntialiasing);
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.4);
        m_draw(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pm(size);
        pm.fill(Qt::transparent);
        QPainter p(&pm);
        paint(&p, QRect(QPoint(0, 0), size), mode, state);
        return pm;
    }

    QIconEngine *clone() const override { return new FaceEngine(m_draw); }

private:
    Drawing m_draw;
};

QIcon face(Drawing draw)
{
    return QIcon(new FaceEngine(std::move(draw)));
}

void padlock(QPainter &p, bool closed)
{
    const QRectF body(14, 22, 20, 16);
    QPainterPath shackle;
    // Open: the shackle lifted and swung to the right.
    const qreal lift = closed ? 0 : 5;
    shackle.moveTo(18, 22 - lift);
    shackle.lineTo(18, 16 - lift);
    shackle.arcTo(QRectF(18, 9 - lift, 12, 12), 180, -180);
    shackle.lineTo(30, closed ? 22 : 17 - lift);
    p.setPen(QPen(Qt::black, 2.5));
    p.setBrush(Qt::NoBrush);
    p.drawPath(shackle);
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(closed ? QColor(0xc0, 0x30, 0x30) : QColor(0x30, 0x90, 0x30));
    p.drawRoundedRect(body, 2, 2);
    p.setBrush(Qt::black);
    p.drawEllipse(QPointF(24, 29), 2, 2);
}

} // namespace

QIcon glyph(const QString &text, const QColor &capColour, const QColor &ink)
{
    return face([text, capColour, ink](QPainter &p) {
        // A plain key shows its glyph on the button's own face, as the text
        // keys do; a coloured key fills its face with the colour, unframed.
        if (capColour != Plain) {
            p.setPen(Qt::NoPen);
            p.setBrush(capColour);
            p.drawRoundedRect(QRectF(2, 2, Size - 4, Size - 4), 5, 5);
        }
        QFont f = p.font();
        f.setBold(true);
        f.setPixelSize(text.size() <= 1 ? 26 : text.size() == 2 ? 20 : 15);
        p.setFont(f);
        p.setPen(ink);
        p.drawText(QRectF(0, 0, Size, Size), Qt::AlignCenter, text);
    });
}

QIcon symbol(Symbol which)
{
    return face([which](QPainter &p) {
        switch (which) {
        case Symbol::Drawer:
            // The till's drawer pulled half out, with its handle.
            p.setPen(QPen(Qt::black, 1.5));
            p.setBrush(QColor(0xb0, 0xb0, 0xb0));
            p.drawRect(QRectF(9, 14, 30, 12));
            p.setBrush(QColor(0xf0, 0xd0, 0x60));
            p.drawRect(QRectF(7, 26, 34, 10));
            p.setBrush(Qt::black);
            p.drawRect(QRectF(20, 30, 8, 2));
            break;
        case Symbol::Feed:
            // A strip of paper with an arrow pointing the way it comes out.
            p.setPen(QPen(Qt::black, 1.2));
            p.setBrush(Qt::white);
            p.drawRect(QRectF(14, 8, 20, 32));
            for (int y = 14; y <= 22; y += 4)
                p.drawLine(QLineF(17, y, 31, y));
            p.setPen(QPen(QColor(0x20, 0x50, 0xc0), 3));
            p.drawLine(QLineF(24, 38, 24, 27));
            p.setBrush(QColor(0x20, 0x50, 0xc0));
            p.setPen(Qt::NoPen);
            p.drawPolygon(QPolygonF({QPointF(18, 29), QPointF(30, 29), QPointF(24, 22)}));
            break;
        case Symbol::Lock:
            padlock(p, true);
            break;
        case Symbol::Unlock:
            padlock(p, false);
            break;
        }
    });
}

} // namespace KeyFaces
