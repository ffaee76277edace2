// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReportCommands.h"

#include "PrinterContext.h"
#include "TextLayout.h"

using TextLayout::money;

void ReportCommands::install(CommandTable &t)
{
    t.insert("FiscalClosure", [this](ArgReader &a) { return closure(a); });
    t.insert("PrintXFinanziarioGiorno", [this](ArgReader &a) { return xReport(a, Report::Financial, false); });
    t.insert("PrintXFinanziarioPeriodo", [this](ArgReader &a) { return xReport(a, Report::Financial, true); });
    t.insert("PrintXOperatoreGiorno", [this](ArgReader &a) { return xReport(a, Report::Operator, false); });
    t.insert("PrintXOperatorePeriodo", [this](ArgReader &a) { return xReport(a, Report::Operator, true); });
    t.insert("PrintXOrarioGiorno", [this](ArgReader &a) { return xReport(a, Report::Hourly, false); });
    t.insert("PrintXOrarioPeriodo", [this](ArgReader &a) { return xReport(a, Report::Hourly, true); });
    t.insert("PrintXRepartoGiorno", [this](ArgReader &a) { return xReport(a, Report::Department, false); });
    t.insert("PrintXRepartoPeriodo", [this](ArgReader &a) { return xReport(a, Report::Department, true); });
    t.insert("PrintFiscalMemory", [this](ArgReader &a) { return fiscalMemory(a); });
    t.insert("ResetTotalePlu", [this](ArgReader &a) { return resetPlu(a); });
    t.insert("ResetTotalePromo", [this](ArgReader &a) { return resetPromo(a); });
}

QStringList ReportCommands::financialLines(const Totals &t, bool period) const
{
    const int w = m_ctx.lineWidth();
    auto row = [w](const QString &l, const QString &r) { return TextLayout::row(l, r, w); };
    QStringList out{
        row(QStringLiteral("SCONTRINI FISCALI"), QString::number(t.receipts)),
        row(QStringLiteral("VENDITE"), money(t.sales)),
        row(QStringLiteral("STORNI"), money(-t.voids)),
        row(QStringLiteral("SCONTI"), money(-t.discounts)),
        row(QStringLiteral("MAGGIORAZIONI"), money(t.surcharges)),
        row(period ? QStringLiteral("TOTALE PERIODICO") : QStringLiteral("TOTALE GIORNALIERO"), money(t.net())),
    };
    const char *names[] = {"CONTANTI", "ASSEGNI", "CARTE DI CREDITO", "TICKET"};
    for (int type = 0; type < 4; ++type)
        out << row(QString::fromLatin1(names[type]), money(t.payments.value(type).amount));
    out << row(QStringLiteral("RESTO"), money(t.change))
        << row(QStringLiteral("DOC. NON FISCALI"), QString::number(t.nonFiscal))
        << row(QStringLiteral("SCONTRINI ANNULLATI"), QString::number(t.cancelled));
    return out;
}

QStringList ReportCommands::vatLines(const Totals &t) const
{
    const int w = m_ctx.lineWidth();
    QStringList out;
    for (auto it = t.vat.begin(); it != t.vat.end(); ++it) {
        const float rate = it.key() >= 1 && it.key() <= m_ctx.memory.iva.size() ? m_ctx.memory.iva[it.key() - 1] : 0.0f;
        // Prices include VAT: the tax is the part rate / (100 + rate).
        const Currency tax = lineAmount(double(rate) / (100.0 + double(rate)), it->amount);
        out << TextLayout::row(QStringLiteral("IVA %1%").arg(TextLayout::percent(rate)), money(it->amount), w)
            << TextLayout::row(QStringLiteral("  IMPOSTA"), money(tax), w);
    }
    return out;
}

QStringList ReportCommands::reportFooter() const
{
    const int w = m_ctx.lineWidth();
    return {QString(), TextLayout::row(TextLayout::stamp(m_ctx.now()), m_ctx.memory.serial, w)};
}

Reply ReportCommands::closure(ArgReader &a)
{
    const int op = a.integer();
    if (!a.ok())
        return a.failure();
    if (op < 1 || op > PrinterMemory::OperatorRows)
        return Reply::refuse(PrinterError::NoOperator);
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (auto r = m_ctx.cannotRecord())
        return *r;
    PrinterMemory &m = m_ctx.memory;
    const int w = m_ctx.lineWidth();
    const int number = m_ctx.config.resets + int(m.fiscalMemory.size()) + 1;

    ClosureRecord z;
    z.number = number;
    z.when = m_ctx.now();
    z.receipts = m.day.receipts;
    z.total = m.day.net();
    for (auto it = m.day.vat.begin(); it != m.day.vat.end(); ++it)
        z.vat.insert(it.key(), it->amount);
    Currency grand;
    for (const auto &r : m.fiscalMemory)
        grand = grand + r.total;
    grand = grand + z.total;

    QStringList lines = m_ctx.headerBlock();
    lines << QString() << TextLayout::centred(QStringLiteral("CHIUSURA GIORNALIERA"), w)
          << TextLayout::centred(QStringLiteral("AZZERAMENTO N. %1").arg(number, 4, 10, QLatin1Char('0')), w)
          << TextLayout::rule(w) << financialLines(m.day) << TextLayout::rule(w) << vatLines(m.day)
          << TextLayout::row(QStringLiteral("GRAN TOTALE"), money(grand), w)
          << TextLayout::row(QStringLiteral("DGFE N."), QString::number(m.journal.number), w) << QString()
          << TextLayout::row(TextLayout::stamp(z.when), QStringLiteral("Z N. %1").arg(number, 4, 10, QLatin1Char('0')), w)
          << TextLayout::centred(QStringLiteral("MF ") + m.serial, w);

    m.fiscalMemory.append(z);
    m_ctx.printDocument(QStringLiteral("CHIUSURA Z"), 0, lines);
    m.day = Totals();
    m.receiptNumber = 0;
    m.lastClosure = z.when;
    m_ctx.changed();
    return Reply::ok();
}

Reply ReportCommands::xReport(ArgReader &a, Report kind, bool period)
{
    a.integer();
    const int which = kind == Report::Operator || kind == Report::Department ? a.integer() : 0;
    if (!a.ok())
        return a.failure();
    if (kind == Report::Operator && (which < 0 || which > PrinterMemory::OperatorRows))
        return Reply::refuse(PrinterError::NotProvided);
    if (kind == Report::Department && (which < 0 || which > m_ctx.memory.departments.size()))
        return Reply::refuse(PrinterError::NotProvided);
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (auto r = m_ctx.cannotRecord())
        return *r;

    const Totals &t = period ? m_ctx.memory.period : m_ctx.memory.day;
    const int w = m_ctx.lineWidth();
    const char *titles[] = {"FINANZIARIO", "OPERATORI", "ORARIO", "REPARTI"};
    QStringList lines = m_ctx.headerBlock();
    lines << QString() << TextLayout::centred(QStringLiteral("LETTURA X %1").arg(QString::fromLatin1(titles[int(kind)])), w)
          << TextLayout::centred(period ? QStringLiteral("PERIODICO") : QStringLiteral("GIORNALIERO"), w)
          << TextLayout::rule(w);
    switch (kind) {
    case Report::Financial:
        lines << financialLines(t, period) << vatLines(t);
        break;
    case Report::Operator:
        for (int op = 1; op <= PrinterMemory::OperatorRows; ++op) {
            if ((which != 0 && op != which) || (which == 0 && !t.operators.contains(op)))
                continue;
            const Bucket b = t.operators.value(op);
            lines << TextLayout::row(QStringLiteral("%1 %2").arg(op).arg(m_ctx.memory.operators[op - 1].description),
                                     QString::number(b.count), w)
                  << TextLayout::row(QStringLiteral("  TOTALE"), money(b.amount), w);
        }
        break;
    case Report::Hourly:
        for (auto it = t.hours.begin(); it != t.hours.end(); ++it)
            lines << TextLayout::row(QStringLiteral("%1:00-%1:59  %2 SC.").arg(it.key(), 2, 10, QLatin1Char('0')).arg(it->count),
                                     money(it->amount), w);
        break;
    case Report::Department:
        for (int d = 1; d <= m_ctx.memory.departments.size(); ++d) {
            if ((which != 0 && d != which) || (which == 0 && !t.departments.contains(d)))
                continue;
            const Bucket b = t.departments.value(d);
            lines << TextLayout::row(QStringLiteral("%1 %2").arg(d).arg(m_ctx.memory.departments[d - 1].description),
                                     money(b.amount), w)
                  << TextLayout::row(QStringLiteral("  PEZZI"), TextLayout::quantity(b.quantity), w);
        }
        break;
    }
    lines << TextLayout::rule(w) << reportFooter();
    m_ctx.printDocument(QStringLiteral("LETTURA X"), 0, lines);
    return Reply::ok();
}

Reply ReportCommands::fiscalMemory(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (auto r = m_ctx.cannotRecord())
        return *r;
    const PrinterMemory &m = m_ctx.memory;
    const int w = m_ctx.lineWidth();
    QStringList lines = m_ctx.headerBlock();
    lines << QString() << TextLayout::centred(QStringLiteral("STAMPA MEMORIA FISCALE"), w)
          << TextLayout::centred(QStringLiteral("MATRICOLA ") + m.serial, w) << TextLayout::rule(w);
    Currency grand;
    for (const ClosureRecord &z : m.fiscalMemory) {
        lines << TextLayout::row(QStringLiteral("Z %1 %2").arg(z.number, 4, 10, QLatin1Char('0')).arg(TextLayout::date(z.when.date())),
                                 money(z.total), w);
        grand = grand + z.total;
    }
    if (m.fiscalMemory.isEmpty())
        lines << TextLayout::centred(QStringLiteral("NESSUNA CHIUSURA"), w);
    lines << TextLayout::rule(w) << TextLayout::row(QStringLiteral("GRAN TOTALE"), money(grand), w)
          << TextLayout::row(QStringLiteral("AZZERAMENTI"),
                             QString::number(m_ctx.config.resets + int(m.fiscalMemory.size())), w)
          << reportFooter();
    m_ctx.printDocument(QStringLiteral("MEMORIA FISCALE"), 0, lines);
    return Reply::ok();
}

Reply ReportCommands::resetPlu(ArgReader &a)
{
    const int plu = a.integer();
    if (!a.ok())
        return a.failure();
    if (plu < 1 || plu > PrinterMemory::PluCount)
        return Reply::refuse(PrinterError::NotProvided);
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (m_ctx.memory.pluTotals.remove(plu) > 0)
        m_ctx.changed();
    return Reply::ok();
}

Reply ReportCommands::resetPromo(ArgReader &a)
{
    const int table = a.longInt();
    const int zero = a.integer();
    if (!a.ok())
        return a.failure();
    if (table < 1 || table > 3)
        return Reply::refuse(PrinterError::NotProvided);
    if (zero != 0)
        return Reply::refuse(PrinterError::BadValue);
    if (auto r = m_ctx.receiptOpen())
        return *r;
    for (PromoRow &p : m_ctx.memory.promos) {
        if (p.type == table && p.total.scaled() != 0) {
            p.total = Currency();
            m_ctx.changed();
        }
    }
    return Reply::ok();
}
