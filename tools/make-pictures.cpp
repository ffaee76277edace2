// SPDX-License-Identifier: GPL-3.0-or-later
// Paints the instruction pictures of the journal change wizard: for each
// printer model, where the journal card sits at the back of the printer, how
// its compartment opens, how a card is labelled and how it goes back in; and
// the three model-neutral pictures the wizard shows by default. Built and
// run by make-pictures.py; nothing here is copied from anywhere.
//
//   make-pictures <img folder> <default pictures folder>

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <cstdio>

namespace {

constexpr int W = 400;
constexpr int H = 300;

// What tells the models apart on the pictures.
struct Model
{
    QString name;      // as written on the body
    QString folder;    // under img/
    QColor body;       // colour of the case
    QRectF caseRect;   // the case seen from the back
    qreal radius;      // roundness of its corners
    QRectF bay;        // the journal compartment on the back
    enum Lock { Knob, Latch, RearLatch, None } lock;
    bool cover;        // a plastic cover closes the compartment
};

const QColor kCard(40, 90, 170);
const QColor kMark(210, 40, 30);
const QColor kInk(30, 30, 30);

QFont font(int px, bool bold = false)
{
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(px);
    f.setBold(bold);
    return f;
}

void arrow(QPainter &p, QPointF from, QPointF to, const QColor &colour = kMark)
{
    p.save();
    p.setPen(QPen(colour, 4, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(from, to);
    const qreal a = std::atan2(to.y() - from.y(), to.x() - from.x());
    QPolygonF head;
    head << to << to - QPointF(std::cos(a - 0.45) * 14, std::sin(a - 0.45) * 14)
         << to - QPointF(std::cos(a + 0.45) * 14, std::sin(a + 0.45) * 14);
    p.setBrush(colour);
    p.setPen(Qt::NoPen);
    p.drawPolygon(head);
    p.restore();
}

void caption(QPainter &p, const QString &text)
{
    p.save();
    p.setPen(kInk);
    p.setFont(font(15, true));
    p.drawText(QRectF(0, H - 34, W, 30), Qt::AlignCenter, text);
    p.restore();
}

void note(QPainter &p, QPointF at, const QString &text, const QColor &colour = kInk)
{
    p.save();
    p.setPen(colour);
    p.setFont(font(12, true));
    p.drawText(at, text);
    p.restore();
}

// A memory card seen from above, its notched corner at top right.
void card(QPainter &p, const QRectF &r, const QString &label = QString(), qreal angle = 0)
{
    p.save();
    p.translate(r.center());
    p.rotate(angle);
    const QRectF c(-r.width() / 2, -r.height() / 2, r.width(), r.height());
    QPainterPath path;
    path.moveTo(c.topLeft());
    path.lineTo(c.right() - c.width() * 0.22, c.top());
    path.lineTo(c.right(), c.top() + c.width() * 0.22);
    path.lineTo(c.bottomRight());
    path.lineTo(c.bottomLeft());
    path.closeSubpath();
    p.setPen(QPen(kInk, 1.5));
    p.setBrush(kCard);
    p.drawPath(path);
    // Contacts along the bottom edge.
    p.setBrush(QColor(220, 190, 60));
    p.setPen(Qt::NoPen);
    const qreal step = c.width() / 7;
    for (int i = 0; i < 6; ++i)
        p.drawRect(QRectF(c.left() + step * (i + 0.6), c.bottom() - c.height() * 0.16, step * 0.55, c.height() * 0.12));
    if (!label.isEmpty()) {
        const QRectF sticker(c.left() + c.width() * 0.1, c.top() + c.height() * 0.2, c.width() * 0.8,
                             c.height() * 0.5);
        p.setBrush(Qt::white);
        p.setPen(QPen(kInk, 1));
        p.drawRect(sticker);
        p.setFont(font(int(c.height() * 0.11)));
        p.drawText(sticker.adjusted(3, 2, -3, -2), Qt::AlignLeft | Qt::AlignVCenter, label);
    }
    p.restore();
}

// The printer seen from the back, with its compartment drawn open or closed.
void printerBack(QPainter &p, const Model &m, bool open)
{
    p.save();
    // Paper roll window on top and feet below, to say "this is the printer".
    p.setPen(QPen(kInk, 2));
    p.setBrush(m.body);
    p.drawRoundedRect(m.caseRect, m.radius, m.radius);
    p.setBrush(m.body.darker(115));
    p.drawRoundedRect(QRectF(m.caseRect.left() + 20, m.caseRect.top() - 16, m.caseRect.width() - 40, 22), 6, 6);
    p.setBrush(kInk);
    p.drawRect(QRectF(m.caseRect.left() + 14, m.caseRect.bottom(), 24, 6));
    p.drawRect(QRectF(m.caseRect.right() - 38, m.caseRect.bottom(), 24, 6));
    // Connectors of the back panel.
    p.setBrush(QColor(70, 70, 70));
    p.drawRect(QRectF(m.caseRect.left() + 18, m.caseRect.bottom() - 34, 40, 18));
    p.drawEllipse(QRectF(m.caseRect.left() + 66, m.caseRect.bottom() - 34, 18, 18));
    p.setPen(m.body.darker(160));
    p.setFont(font(14, true));
    p.drawText(QRectF(m.caseRect.left(), m.caseRect.top() + 6, m.caseRect.width() - 12, 20),
               Qt::AlignRight | Qt::AlignVCenter, m.name);

    // The compartment.
    p.setPen(QPen(kInk, 2));
    p.setBrush(open ? QColor(45, 45, 45) : m.body.lighter(112));
    p.drawRoundedRect(m.bay, 4, 4);
    if (open) {
        // The slot and the card's edge in it.
        const QRectF slot(m.bay.center().x() - 34, m.bay.center().y() - 5, 68, 10);
        p.setBrush(QColor(15, 15, 15));
        p.drawRect(slot);
        p.setBrush(kCard);
        p.drawRect(slot.adjusted(6, 2, -6, -2));
    } else if (m.cover) {
        // Screws of the cover.
        p.setBrush(QColor(150, 150, 150));
        p.drawEllipse(QPointF(m.bay.left() + 8, m.bay.top() + 8), 3, 3);
        p.drawEllipse(QPointF(m.bay.right() - 8, m.bay.bottom() - 8), 3, 3);
    }
    p.restore();
}

void lockDetail(QPainter &p, const Model &m)
{
    p.save();
    p.setPen(QPen(kInk, 2));
    switch (m.lock) {
    case Model::Knob: {
        const QPointF c(m.bay.right() - 16, m.bay.center().y());
        p.setBrush(QColor(200, 200, 200));
        p.drawEllipse(c, 11, 11);
        p.drawLine(c - QPointF(0, 9), c + QPointF(0, 9));
        p.setPen(QPen(kMark, 3));
        p.setBrush(Qt::NoBrush);
        p.drawArc(QRectF(c.x() - 22, c.y() - 22, 44, 44), 30 * 16, 120 * 16);
        arrow(p, c + QPointF(-19, -11), c + QPointF(-21, -2));
        note(p, c + QPointF(24, 30), QStringLiteral("manopola"), kMark);
        break;
    }
    case Model::Latch: {
        const QRectF latch(m.bay.right() - 22, m.bay.top() + 6, 12, m.bay.height() - 12);
        p.setBrush(QColor(235, 235, 235));
        p.drawRect(latch.translated(0, -6));
        arrow(p, QPointF(latch.center().x() + 20, latch.top() + 10), QPointF(latch.center().x() + 20, latch.top() - 16));
        note(p, QPointF(latch.left() - 6, m.bay.top() - 26), QStringLiteral("fermo"), kMark);
        break;
    }
    case Model::RearLatch: {
        const QRectF latch(m.bay.center().x() - 26, m.bay.top() - 10, 52, 12);
        p.setBrush(QColor(235, 235, 235));
        p.drawRect(latch.translated(0, -4));
        arrow(p, QPointF(latch.right() + 14, latch.top() + 8), QPointF(latch.right() + 14, latch.top() - 20));
        note(p, QPointF(latch.right() + 22, latch.top() - 6), QStringLiteral("fermo"), kMark);
        break;
    }
    case Model::None:
        break;
    }
    p.restore();
}

void markBay(QPainter &p, const Model &m)
{
    p.save();
    p.setPen(QPen(kMark, 3, Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(m.bay.adjusted(-7, -7, 7, 7), 8, 8);
    p.restore();
}

QImage canvas()
{
    QImage img(W, H, QImage::Format_RGB32);
    img.fill(QColor(250, 250, 246));
    return img;
}

QImage extraction(const Model &m)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    printerBack(p, m, true);
    markBay(p, m);
    lockDetail(p, m);
    if (m.cover) {
        // The cover, taken off and set aside.
        const QRectF cover(m.caseRect.left() + 10, 4, m.bay.width(), 42);
        p.setPen(QPen(kInk, 2));
        p.setBrush(m.body.lighter(112));
        p.drawRoundedRect(cover, 4, 4);
        note(p, cover.topRight() + QPointF(8, 26), QStringLiteral("coperchio"), kMark);
        arrow(p, m.bay.topLeft() + QPointF(6, 6), cover.bottomRight() + QPointF(-10, 4));
    }
    // Push, and the card comes out.
    const QPointF slot = m.bay.center();
    arrow(p, slot + QPointF(0, -58), slot + QPointF(0, -14), kCard.darker(130));
    card(p, QRectF(slot.x() - 30, m.caseRect.bottom() + 10, 60, 40));
    arrow(p, slot + QPointF(48, 10), slot + QPointF(48, 62));
    note(p, QPointF(slot.x() + 56, slot.y() + 44), QStringLiteral("MMC"), kMark);
    caption(p, QStringLiteral("%1: estrazione della memoria MMC").arg(m.name));
    return img;
}

QImage change(const Model &m)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    note(p, QPointF(40, 36), QStringLiteral("memoria esaurita"));
    card(p, QRectF(40, 48, 120, 84), QStringLiteral("DGFE n. 1\n01/01/2026\nmatricola"), -6);
    note(p, QPointF(230, 36), QStringLiteral("memoria nuova"));
    card(p, QRectF(230, 48, 120, 84));
    arrow(p, QPointF(170, 90), QPointF(222, 90));
    // The label that goes on the new card, with what to write on it.
    const QRectF sticker(200, 160, 170, 84);
    p.setPen(QPen(kInk, 1.5));
    p.setBrush(Qt::white);
    p.drawRect(sticker);
    p.setFont(font(13));
    p.drawText(sticker.adjusted(8, 6, -6, -4), Qt::AlignLeft | Qt::AlignTop,
               QStringLiteral("data: __/__/____\nmatricola: ________\nDGFE n.: ___"));
    arrow(p, sticker.topLeft() + QPointF(40, -4), QPointF(280, 122));
    note(p, QPointF(40, 190), QStringLiteral("etichetta"), kMark);
    note(p, QPointF(40, 208), QStringLiteral("fornita a corredo"), kMark);
    if (!m.name.isEmpty())
        note(p, QPointF(40, 240), m.name, m.body.darker(170));
    caption(p, QStringLiteral("Preparazione della nuova memoria MMC"));
    return img;
}

QImage insertion(const Model &m)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    printerBack(p, m, true);
    markBay(p, m);
    const QPointF slot = m.bay.center();
    card(p, QRectF(slot.x() - 30, m.caseRect.bottom() + 12, 60, 40), QString(), 180);
    arrow(p, QPointF(slot.x() + 52, m.caseRect.bottom() + 50), QPointF(slot.x() + 52, slot.y() + 6));
    note(p, QPointF(slot.x() + 60, slot.y() + 40), QStringLiteral("clic!"), kMark);
    caption(p, QStringLiteral("%1: inserimento della memoria MMC").arg(m.name));
    return img;
}

bool save(const QImage &img, const QString &path)
{
    if (!img.save(path, "JPG", 90)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s\n", qPrintable(path));
    return true;
}

}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-pictures <img folder> <default pictures folder>\n");
        return 2;
    }
    const QString img = QString::fromLocal8Bit(argv[1]);
    const QString defaults = QString::fromLocal8Bit(argv[2]);

    const Model models[] = {
        // KX90: a wide, low case; a screwed cover on the right of the back
        // and a knob that holds the card.
        {QStringLiteral("KX90"), QStringLiteral("KX90"), QColor(205, 208, 212), QRectF(40, 70, 320, 150), 14,
         QRectF(190, 110, 110, 60), Model::Knob, true},
        // KX90 II: the same case in dark grey; a latch in place of the knob.
        {QStringLiteral("KX90 II"), QStringLiteral("KX90II"), QColor(120, 125, 132), QRectF(40, 70, 320, 150), 14,
         QRectF(190, 110, 110, 60), Model::Latch, true},
        // KX81: a compact, taller case; no cover, a latch above the slot.
        {QStringLiteral("KX81"), QStringLiteral("KX81"), QColor(232, 226, 210), QRectF(80, 60, 240, 150), 26,
         QRectF(140, 120, 120, 50), Model::RearLatch, false},
    };
    bool ok = true;
    for (const Model &m : models) {
        const QDir dir(QDir(img).filePath(m.folder));
        QDir().mkpath(dir.path());
        ok &= save(extraction(m), dir.filePath(QStringLiteral("Estrazione_DGFE.jpg")));
        ok &= save(change(m), dir.filePath(QStringLiteral("Cambio_DGFE.jpg")));
        ok &= save(insertion(m), dir.filePath(QStringLiteral("Inserimento_DGFE.jpg")));
    }
    // Model-neutral: a plain case with its compartment, no lock drawn.
    const Model neutral{QString(), QString(), QColor(190, 194, 200), QRectF(40, 70, 320, 150), 16,
                        QRectF(170, 110, 120, 60), Model::None, false};
    QDir().mkpath(defaults);
    Model shown = neutral;
    shown.name = QStringLiteral("Stampante");
    ok &= save(extraction(shown), QDir(defaults).filePath(QStringLiteral("Estrazione_DGFE.jpg")));
    ok &= save(change(neutral), QDir(defaults).filePath(QStringLiteral("Cambio_DGFE.jpg")));
    ok &= save(insertion(shown), QDir(defaults).filePath(QStringLiteral("Inserimento_DGFE.jpg")));
    return ok ? 0 : 1;
}
