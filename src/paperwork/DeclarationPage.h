// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>

// One instruction of the declaration's page: a line of text, a gap, or a
// change of the font. Font changes and the steps marked paperOnly exist only
// on paper; the text file leaves them out.
struct PageStep
{
    enum class Kind { Line, Gap, FontSize, Bold };
    Kind kind = Kind::Line;
    QString text;      // Line
    int value = 0;     // Gap: the size in points; FontSize; Bold: 1 or 0
    bool paperOnly = false;

    bool operator==(const PageStep &) const = default;
};

// What the page is filled with: what the printer says of itself and the
// customer's data shared by the commissioning.
struct DeclarationData
{
    int16_t printMode = 1;   // 1 commissioning, 2 decommissioning
    QString matricola;       // empty when it could not be read
    int32_t azzeramenti = 0;
    int16_t day = 0, month = 0, year = 0; // the year in two digits
    QString nome, cdf, qual, partitaIva;
    QStringList ragioneSociale, sede, indirizzo;

    // Asks the printer (skipping what a busy control cannot answer, ignoring
    // refusals: the properties hold what they hold) and takes the shared data.
    static DeclarationData read(int16_t printMode);
};

// The declaration for the tax office as a fixed-pitch page. The printed page
// and the text file are both made from the one list of steps.
namespace DeclarationPage {

QList<PageStep> compose(const DeclarationData &data);

// The table's data row; empty when the resets count has more than three
// digits and the row is left out.
QString dataRow(const QString &matricola, int32_t azzeramenti);

// The lines of the text file: every line, a single blank for each gap, no
// paper-only step.
QStringList textLines(const QList<PageStep> &steps);
// The file's bytes: Windows-1252, CR-LF after each line.
QByteArray textFile(const QList<PageStep> &steps);

// The name proposed for the text file ("Modulo_Installazione_" or
// "Modulo_Disinstallazione_" + serial number + suffix).
QString proposedName(int16_t printMode, const QString &matricola, const QString &suffix);

}

class QPainter;
class QRectF;

namespace DeclarationPage {
// Draws the steps on paper: a fixed-pitch font ("courier new"), bold and
// sizes as the steps say, a gap as two lines of its size. A line wider than
// the page goes on below; a page that is full goes on on the next.
void drawOnPaper(const QList<PageStep> &steps, QPainter &painter, const QRectF &page,
                 const std::function<bool()> &newPage);
}
