// SPDX-License-Identifier: GPL-3.0-or-later
#include "DeclarationPage.h"

#include "settings/Cp1252.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "printer/SharedState.h"

namespace {

QString twoDigits(int value)
{
    return QString::number(value).rightJustified(2, QLatin1Char('0'));
}

struct Builder
{
    QList<PageStep> steps;

    void line(const QString &text) { steps.append({PageStep::Kind::Line, text, 0, false}); }
    void gap(int size, bool paperOnly = false) { steps.append({PageStep::Kind::Gap, {}, size, paperOnly}); }
    void size(int points) { steps.append({PageStep::Kind::FontSize, {}, points, true}); }
    void bold(bool on) { steps.append({PageStep::Kind::Bold, {}, on ? 1 : 0, true}); }

    // Lines of a list, in capitals and trimmed: the first after its label,
    // the others in line with the first one's text.
    void labelledLines(const QString &label, const QStringList &lines)
    {
        for (qsizetype i = 0; i < lines.size(); ++i) {
            const QString head = i == 0 ? label : QString(18, QLatin1Char(' '));
            line(head + lines[i].toUpper().trimmed());
            gap(2);
        }
    }
};

const QString kRule = QStringLiteral("|---------------|----------------|---------|-----------|------------|");

}

DeclarationData DeclarationData::read(int16_t printMode)
{
    DeclarationData d;
    d.printMode = printMode;
    d.matricola = GetMatricola();
    if (!gFPControl->Busy())
        gFPControl->ReadAzzeramenti();
    d.azzeramenti = gFPControl->Azzeramenti();
    if (!gFPControl->Busy())
        gFPControl->ReadDateTime();
    d.day = gFPControl->DateDay();
    d.month = gFPControl->DateMonth();
    d.year = gFPControl->DateYear();
    d.nome = gNome;
    d.cdf = gCdf;
    d.qual = gQual;
    d.partitaIva = gPartitaIva;
    d.ragioneSociale = gRagioneSociale;
    d.sede = gSede;
    d.indirizzo = gIndirizzo;
    return d;
}

QString DeclarationPage::dataRow(const QString &matricola, int32_t azzeramenti)
{
    const QString a = QString::number(azzeramenti);
    QString cell;
    switch (a.size()) {
    case 1: cell = QStringLiteral("    ") + a + QStringLiteral("    |"); break;
    case 2: cell = QStringLiteral("   ") + a + QStringLiteral("    |"); break;
    case 3: cell = QStringLiteral("   ") + a + QStringLiteral("   |"); break;
    default: return QString();
    }
    // The first column says KX90 for every model; the bars line up for a
    // serial number of ten characters.
    return QStringLiteral("|     KX90      |") + QStringLiteral("   ") + matricola + QStringLiteral("   |") + cell
           + QString(11, QLatin1Char(' ')) + QLatin1Char('|') + QString(12, QLatin1Char(' ')) + QLatin1Char('|');
}

QList<PageStep> DeclarationPage::compose(const DeclarationData &d)
{
    const bool installing = d.printMode == 1;
    const QString w = installing ? QStringLiteral("MESSI IN SERVIZIO") : QStringLiteral(" [] DEFISCALIZZATI  [] CEDUTI ");
    const QString v = installing ? QStringLiteral("Verificazione periodica") : QStringLiteral("      Defiscalizzazione");

    Builder b;
    b.size(12);
    b.bold(true);
    b.gap(10);
    b.line(QStringLiteral("ALL'UFFICIO DELLE ENTRATE DI: ________________________________________"));
    b.gap(8);
    b.line(QStringLiteral("Oggetto: Dichiarazione relativa ai Misuratori Fiscali"));
    b.gap(8);
    b.bold(false);
    b.line(QStringLiteral(" Il sottoscritto: ") + d.nome.toUpper());
    b.gap(2);
    b.line(QStringLiteral("  Codice fiscale: ") + d.cdf.toUpper());
    b.gap(2);
    b.line(QStringLiteral("nella qualità di: ") + d.qual.toUpper());
    b.gap(2);
    b.labelledLines(QStringLiteral("     della ditta: "), d.ragioneSociale);
    b.labelledLines(QStringLiteral("  sede legale in: "), d.sede);
    b.line(QStringLiteral("     Partita IVA: ") + d.partitaIva.toUpper().trimmed());
    b.gap(8, true);
    b.bold(true);
    b.line(QStringLiteral("                            Dichiara"));
    b.bold(false);
    b.gap(8, true);
    // The century is a fixed 20.
    b.line(QStringLiteral("     che in data: ") + twoDigits(d.day) + QStringLiteral(" / ") + twoDigits(d.month)
           + QStringLiteral(" / 20") + twoDigits(d.year));
    b.gap(2);
    b.labelledLines(QStringLiteral("presso l'esercizio ubicato in: "), d.indirizzo);
    b.gap(4, true);
    b.bold(true);
    b.line(QStringLiteral("Sono stati ") + w + QStringLiteral(" i seguenti misuratori fiscali:"));
    b.bold(false);
    b.gap(8);

    b.line(QStringLiteral("|    MODELLO    |    MATRICOLA   | N°      | VERIFICA  | SCAD. VER. |"));
    b.line(QStringLiteral("|               |    FISCALE     | AZZERA. | PERIODICA | PERIODICA  |"));
    b.line(kRule);
    const QString row = dataRow(d.matricola, d.azzeramenti);
    if (!row.isEmpty())
        b.line(row);
    b.line(kRule);
    b.line(QStringLiteral("|               |                |         |           |            |"));
    b.line(kRule);

    b.size(10);
    b.gap(8);
    if (d.printMode == 2) {
        b.line(QStringLiteral("Da compilare a cura del tecnico SOLO SE effettuata una DEFISCALIZZAZIONE"));
    } else {
        b.line(QStringLiteral("Da compilare a cura del tecnico SOLO SE effettuata la VERIFICAZIONE PERIODICA"));
        b.line(QStringLiteral("con applicazione del bollino verde contestualmente alla messa in servizio"));
    }
    b.gap(8);
    b.line(v + QStringLiteral(" effettuata dal sig.:"));
    b.gap(2);
    b.line(QStringLiteral("   ____________________________________________________________________________"));
    b.gap(2);
    b.line(QStringLiteral("              Codice fiscale: ________________________________"));
    b.gap(2);
    b.line(QStringLiteral("   Marchio identificativo n°: KI ________"));
    b.gap(2);
    b.line(QStringLiteral("   Tessera riconoscimento n°: ________"));
    b.gap(2);
    b.line(QStringLiteral(" Ragione sociale laboratorio: _________________________________________________"));
    b.gap(2);
    b.line(QStringLiteral("                              _________________________________________________"));
    b.gap(2);
    b.line(QStringLiteral("                   Indirizzo: _________________________________________________"));
    b.gap(2);
    b.line(QStringLiteral("                              _________________________________________________"));
    b.gap(2);
    b.line(QStringLiteral("                 Partita IVA: ______________________"));
    b.size(12);
    b.gap(8);
    b.bold(true);
    b.line(QStringLiteral("Data: ___ / ___ / ______"));
    b.size(8);
    b.line(QStringLiteral("  (presentazione Ufficio delle Entrate)"));
    b.gap(8);
    b.size(10);
    b.line(QStringLiteral("La Ditta                           Il Tecnico"));
    b.bold(false);
    // A name that was entered stands above the signature line; the
    // underscores of an empty field do not.
    if (!d.nome.contains(QStringLiteral("____"))) {
        b.gap(4);
        b.line(d.nome);
    }
    b.gap(8);
    b.line(QStringLiteral("____________________________       ______________________________"));
    return b.steps;
}

QStringList DeclarationPage::textLines(const QList<PageStep> &steps)
{
    QStringList lines;
    for (const PageStep &s : steps) {
        if (s.paperOnly)
            continue;
        if (s.kind == PageStep::Kind::Line)
            lines.append(s.text);
        else if (s.kind == PageStep::Kind::Gap)
            lines.append(QStringLiteral(" "));
    }
    return lines;
}

QByteArray DeclarationPage::textFile(const QList<PageStep> &steps)
{
    QByteArray bytes;
    for (const QString &line : textLines(steps))
        bytes += Cp1252::encode(line) + "\r\n";
    return bytes;
}

QString DeclarationPage::proposedName(int16_t printMode, const QString &matricola, const QString &suffix)
{
    const QString head = printMode == 1 ? QStringLiteral("Modulo_Installazione_") : QStringLiteral("Modulo_Disinstallazione_");
    return head + matricola + suffix;
}
