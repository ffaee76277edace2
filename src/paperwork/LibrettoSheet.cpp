// SPDX-License-Identifier: GPL-3.0-or-later
#include "LibrettoSheet.h"

#include "ui/Named.h"

#include <QLabel>
#include <QPainter>

namespace {

// The page's geometry, in the sheet's pixels.
constexpr int kPageX = 10, kPageY = 10, kPageW = 440, kPageH = 560;
constexpr int kCaptionX = 14;  // in the page
constexpr int kFieldX = 150;   // in the page
constexpr int kFieldW = 276;
constexpr int kRowH = 20;
constexpr int kTextPx = 11; // the page's printed text and the fields laid over it
constexpr int kNoteX = 500, kNoteW = 300;
constexpr int kCircleX = 478, kCircleR = 11;

// A printed row of the page: its caption and where its blank lies.
struct Row
{
    const char *caption;
    int y; // top, in the page
};

const Row kRows[] = {
    {"Ditta venditrice", 80},           // 0  note 1
    {"Ditta utente", 130},              // 1
    {"Domicilio fiscale", 160},         // 2  note 2
    {"Partita IVA", 190},               // 3
    {"Data di installazione", 230},     // 4  note 3
    {"Luogo di installazione", 260},    // 5  note 4
    {"N. azzeramenti", 300},            // 6  note 5
};
// The self-declaration at the foot of the page (note 6).
constexpr int kDeclY = 370;

QLabel *field(QWidget *page, const char *name, int x, int y, int w)
{
    auto *label = named(new QLabel(page), name);
    label->setGeometry(x, y, w, kRowH - 2);
    label->setAutoFillBackground(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::Window, QColor(255, 255, 192));
    palette.setColor(QPalette::WindowText, Qt::black);
    label->setPalette(palette);
    label->setIndent(3);
    QFont f = label->font();
    f.setPixelSize(kTextPx);
    label->setFont(f);
    return label;
}

// The booklet's page itself: captions, rules and blanks.
class PageView : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        p.setPen(QPen(Qt::black, 1));
        p.drawRect(rect().adjusted(0, 0, -1, -1));
        QFont title = font();
        title.setBold(true);
        title.setPixelSize(14);
        p.setFont(title);
        p.drawText(QRect(0, 14, width(), 22), Qt::AlignHCenter, QStringLiteral("LIBRETTO FISCALE"));
        title.setPixelSize(12);
        p.setFont(title);
        p.drawText(QRect(0, 38, width(), 20), Qt::AlignHCenter, QStringLiteral("DATI DI INSTALLAZIONE DEL MISURATORE FISCALE"));
        QFont plain = font();
        plain.setPixelSize(kTextPx);
        p.setFont(plain);
        for (const Row &row : kRows) {
            p.drawText(QRect(kCaptionX, row.y, kFieldX - kCaptionX, kRowH), Qt::AlignVCenter,
                       QString::fromUtf8(row.caption) + QLatin1Char(':'));
            p.drawLine(kFieldX, row.y + kRowH - 1, kFieldX + kFieldW, row.y + kRowH - 1);
        }
        p.drawRect(8, kDeclY - 8, width() - 17, 160);
        const QString decl[] = {QStringLiteral("Il sottoscritto, in qualità di"), QStringLiteral("della ditta"),
                                QStringLiteral("dichiara che il misuratore fiscale è stato messo in servizio"),
                                QStringLiteral("alla data e nel luogo sopra indicati."), QStringLiteral("Firma")};
        const int declY[] = {kDeclY, kDeclY + 30, kDeclY + 60, kDeclY + 78, kDeclY + 110};
        for (int i = 0; i < 5; ++i)
            p.drawText(QRect(kCaptionX, declY[i], width() - 2 * kCaptionX, kRowH), Qt::AlignVCenter, decl[i]);
        for (int y : {kDeclY, kDeclY + 30})
            p.drawLine(kFieldX + 40, y + kRowH - 1, kFieldX + kFieldW, y + kRowH - 1);
        p.drawLine(kFieldX, kDeclY + 110 + kRowH - 1, kFieldX + kFieldW, kDeclY + 110 + kRowH - 1);
    }
};

}

LibrettoSheet::LibrettoSheet(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmLibretto"));
    setFixedSize(kNoteX + kNoteW + 10, kPageH + 2 * kPageY);

    Image1 = named(new PageView(this), "Image1");
    Image1->setGeometry(kPageX, kPageY, kPageW, kPageH);

    lblRagSocUte = field(Image1, "lblRagSocUte", kFieldX, kRows[1].y, kFieldW);
    lblIndFisc = field(Image1, "lblIndFisc", kFieldX, kRows[2].y, kFieldW);
    lblPIva = field(Image1, "lblPIva", kFieldX, kRows[3].y, kFieldW);
    lblDataInst = field(Image1, "lblDataInst", kFieldX, kRows[4].y, 90);
    lblAzzera = field(Image1, "lblAzzera", kFieldX, kRows[6].y, 60);
    lblQualif = field(Image1, "lblQualif", kFieldX + 40, kDeclY, kFieldW - 40);
    lblRagSoc2 = field(Image1, "lblRagSoc2", kFieldX + 40, kDeclY + 30, kFieldW - 40);
    lblFirma = field(Image1, "lblFirma", kFieldX, kDeclY + 110, kFieldW);

    const char *names[] = {"Label1", "Label2", "Label3", "Label4", "Label5", "Label6"};
    const char *texts[] = {
        "Società che ha venduto il misuratore fiscale",
        "Sede legale della società che ha acquistato il misuratore fiscale",
        "Anche posteriore a quella di consegna",
        "La sede operativa dell'utente, dove viene messa in servizio la stampante",
        "Si ricava dall'ultima chiusura fiscale eseguita: 8282 + C + 01 + INVIO (Z01)",
        "Dichiarazione in autocertificazione firmata dall'utente",
    };
    QLabel **notes[] = {&Label1, &Label2, &Label3, &Label4, &Label5, &Label6};
    const int noteRows[] = {kRows[0].y, kRows[2].y, kRows[4].y, kRows[5].y, kRows[6].y, kDeclY + 110};
    for (int i = 0; i < 6; ++i) {
        *notes[i] = named(new QLabel(QString::fromUtf8(texts[i]), this), names[i]);
        (*notes[i])->setWordWrap(true);
        (*notes[i])->setGeometry(kNoteX, kPageY + noteRows[i] - 6, kNoteW, 2 * kRowH + 4);
        (*notes[i])->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
}

void LibrettoSheet::paintEvent(QPaintEvent *)
{
    // The circles (Shape1..Shape6) with their numbers, and the lines
    // (Line1..Line6) from the page's edge to them.
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const int noteRows[] = {kRows[0].y, kRows[2].y, kRows[4].y, kRows[5].y, kRows[6].y, kDeclY + 110};
    QFont number = font();
    number.setBold(true);
    number.setPixelSize(11);
    p.setFont(number);
    for (int i = 0; i < 6; ++i) {
        const int y = kPageY + noteRows[i] + kRowH / 2;
        p.setPen(QPen(QColor(0, 0, 160), 1.5));
        p.drawLine(kPageX + kPageW - 6, y, kCircleX - kCircleR, y);
        p.drawEllipse(QPoint(kCircleX, y), kCircleR, kCircleR);
        p.drawText(QRect(kCircleX - kCircleR, y - kCircleR, 2 * kCircleR, 2 * kCircleR), Qt::AlignCenter,
                   QString::number(i + 1));
    }
}
