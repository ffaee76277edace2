// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FakeFPControl.h"

#include <QSet>

// A printer's programming in memory, for the screens that read and write it:
// four VAT rates (kept when written), `departments` departments, flags 1 and
// 2 (flag n holds n % 2), parameters 1..12 (parameter n holds n), a header of
// a plain, a centred and a double line, and for the other tables rows that
// name their number. Other writes go to the record only. What lies beyond a
// table, and "Name:n" in refuse, is refused as NON PREVISTO (16).
struct ProgrammingPrinter
{
    float iva[4] = {22, 10, 5, 4};
    int departments = 40;
    QSet<QString> refuse;

    void attach(FakeFPControl &fake)
    {
        fake.handler = [this](const FakeFPControl::Call &c, FakeFPControl &f) { return answer(c, f); };
    }

    std::optional<int16_t> answer(const FakeFPControl::Call &c, FakeFPControl &f)
    {
        const int n = c.args.value(0).toInt();
        const QString s = QString::number(n);
        const auto set = [&f](const QString &prefix, const QList<std::pair<const char *, QString>> &values) {
            for (const auto &[name, value] : values)
                f.setProperty(prefix + QLatin1String(name), value);
        };
        if (refuse.contains(c.name + ":" + s) || (c.name == "ReadReparto" && n > departments)
            || (c.name == "ReadFlag" && n > 2) || (c.name == "ReadParam" && n > 12)) {
            f.setProperty("ErrorCode", "16");
            return int16_t(-1);
        }
        if (c.name == "ReadIva") {
            set("Iva", {{"Number", s}, {"Aliquota", QString::number(iva[n - 1])}});
        } else if (c.name == "WriteIva") {
            iva[n - 1] = c.args.value(1).toFloat();
        } else if (c.name == "ReadReparto") {
            set("Reparto", {{"Number", s}, {"Descrizione", "  REP " + s}, {"Limite", "1005000"},
                            {"Iva", QString::number(n % 5)}, {"ScontRiass", "2"}, {"GrpMerc", "3"}});
        } else if (c.name == "ReadCarta") {
            set("Carta", {{"Number", s}, {"Descrizione", " CARTA " + s + " "}});
        } else if (c.name == "ReadTicket") {
            set("Ticket", {{"Number", s}, {"Descrizione", "TICKET " + s}, {"Valore", "52900"}});
        } else if (c.name == "ReadContante" || c.name == "ReadContantePredefinito") {
            set("Contante", {{"Number", s}, {"Descrizione", "CASSA " + s + "   "}, {"Importo", "1000000"}});
        } else if (c.name == "ReadOperatore") {
            set("Operatore", {{"Number", s}, {"Descrizione", "OPERATORE " + s}, {"Password", "12" + s},
                              {"Percentuale", "2.5"}});
        } else if (c.name == "ReadFlag") {
            f.setProperty("FlagValue", QString::number(n % 2));
        } else if (c.name == "ReadParam") {
            f.setProperty("ParamValue", s);
        } else if (c.name == "ReadHeaderLine") {
            const QStringList lines{"NEGOZIO" + QString(33, ' '), QString(40, ' '),
                                    QString(17, ' ') + "CENTRO" + QString(17, ' '),
                                    QString(17, ' ') + "DOPPIA" + QString(17, ' '), QString(40, ' '), QString(40, ' ')};
            f.setProperty("HeaderLineText", lines.value(n - 1));
        } else if (c.name == "ReadHeaderStyle") {
            f.setProperty("HeaderStyle", n == 4 ? "3" : "1");
        } else if (c.name == "ReadPromo") {
            f.setProperty("PromoNumber", QString::number(n + 100));
        }
        return std::nullopt;
    }
};
