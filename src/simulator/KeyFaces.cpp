#include "KeyFaces.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace KeyFaces {

namespace {

const QColor Edge(0x60, 0x60, 0x60);

// A blank cap, ready for its glyph; the painter is left on the pixmap.
QPixmap cap(const QColor &fill)
{
    QPixmap pm(Size, Size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Edge, 1.5));
    p.setBrush(fill);
    p.drawRoundedRect(QRectF(2, 2, Size - 4, Size - 4), 7, 7);
    return pm;
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
    QPixmap pm = cap(capColour);
    QPainter p(&pm);
    p.setRenderHint(QPainter::TextAntialiasing);
    QFont f = p.font();
    f.setBold(true);
    f.setPixelSize(text.size() <= 1 ? 26 : text.size() == 2 ? 20 : 15);
    p.setFont(f);
    p.setPen(ink);
    p.drawText(QRect(0, 0, Size, Size), Qt::AlignCenter, text);
    p.end();
    return QIcon(pm);
}

QIcon symbol(Symbol which)
{
    QPixmap pm = cap(QColor(0xe8, 0xe8, 0xe8));
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
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
    p.end();
    return QIcon(pm);
}

} // namespace KeyFaces
