// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgrammingCommands.h"

#include "PrinterContext.h"

namespace {

bool within(int n, int first, int last) { return n >= first && n <= last; }

QString cut(const QString &text) { return text.left(ProgrammingCommands::DescriptionWidth); }

} // namespace

template <typename T>
Reply ProgrammingCommands::store(T &row, const T &value)
{
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (!(row == value)) {
        row = value;
        m_ctx.changed();
    }
    return Reply::ok();
}

bool ProgrammingCommands::paramInRange(int n, int v)
{
    switch (n) {
    case 7:
        return within(v, 1, 25);
    case 8:
        return within(v, 1, 15);
    case 12:
        return within(v, 0, 2);
    case 9:
    case 10:
    case 13:
        return within(v, 0, 99);
    default:
        return within(v, 0, 9999);
    }
}

void ProgrammingCommands::install(CommandTable &t)
{
    installTables(t);
    installDepartments(t);
    installPromos(t);
    installFlags(t);
}

void ProgrammingCommands::installTables(CommandTable &t)
{
    PrinterMemory &m = m_ctx.memory;

    t.insert("ReadIva", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::IvaRows))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("IvaNumber", n).with("IvaAliquota", m.iva[n - 1]);
    });
    t.insert("WriteIva", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const float rate = a.single();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::IvaRows))
            return Reply::refuse(PrinterError::NotProvided);
        if (rate < 0 || rate >= 100)
            return Reply::refuse(PrinterError::BadValue);
        return store(m.iva[n - 1], rate);
    });

    t.insert("ReadCarta", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::CardRows))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("CartaNumber", n).with("CartaDescrizione", m.cards[n - 1]);
    });
    t.insert("WriteCarta", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const QString d = a.text();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::CardRows))
            return Reply::refuse(PrinterError::NotProvided);
        return store(m.cards[n - 1], cut(d));
    });

    t.insert("ReadTicket", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::TicketRows))
            return Reply::refuse(PrinterError::NotProvided);
        const TicketRow &r = m.tickets[n - 1];
        return Reply::ok().with("TicketNumber", n).with("TicketDescrizione", r.description).with("TicketValore", r.value);
    });
    t.insert("WriteTicket", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const QString d = a.text();
        const Currency v = a.currency();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::TicketRows))
            return Reply::refuse(PrinterError::NotProvided);
        if (v.scaled() < 0)
            return Reply::refuse(PrinterError::BadValue);
        return store(m.tickets[n - 1], TicketRow{cut(d), v});
    });

    t.insert("ReadContante", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::CashRows))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("ContanteNumber", n).with("ContanteDescrizione", m.cash[n - 1].description);
    });
    t.insert("WriteContante", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const QString d = a.text();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::CashRows))
            return Reply::refuse(PrinterError::NotProvided);
        return store(m.cash[n - 1], CashRow{cut(d), m.cash[n - 1].preset});
    });
    t.insert("ReadContantePredefinito", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::CashRows))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("ContanteNumber", n).with("ContanteImporto", m.cash[n - 1].preset);
    });
    t.insert("WriteContantePredefinito", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const Currency v = a.currency();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::CashRows))
            return Reply::refuse(PrinterError::NotProvided);
        if (v.scaled() < 0)
            return Reply::refuse(PrinterError::BadValue);
        return store(m.cash[n - 1], CashRow{m.cash[n - 1].description, v});
    });

    t.insert("ReadOperatore", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::OperatorRows))
            return Reply::refuse(PrinterError::NotProvided);
        const OperatorRow &r = m.operators[n - 1];
        return Reply::ok()
            .with("OperatoreNumber", n)
            .with("OperatoreDescrizione", r.description)
            .with("OperatorePassword", r.password)
            .with("OperatorePercentuale", r.percent);
    });
    t.insert("WriteOperatore", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const QString d = a.text();
        const int pwd = a.integer();
        const float perc = a.single();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::OperatorRows))
            return Reply::refuse(PrinterError::NotProvided);
        if (!within(pwd, 0, 9999) || perc < 0 || perc > 100)
            return Reply::refuse(PrinterError::BadValue);
        return store(m.operators[n - 1], OperatorRow{cut(d), pwd, perc});
    });

    t.insert("ReadPS2", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 0, PrinterMemory::Ps2Keys - 1))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("PS2Funzione", m.ps2[n]);
    });
    t.insert("WritePS2", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const int f = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 0, PrinterMemory::Ps2Keys - 1))
            return Reply::refuse(PrinterError::NotProvided);
        if (f < 0)
            return Reply::refuse(PrinterError::BadValue);
        return store(m.ps2[n], f);
    });
}

void ProgrammingCommands::installDepartments(CommandTable &t)
{
    PrinterMemory &m = m_ctx.memory;
    t.insert("ReadReparto", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, int(m.departments.size())))
            return Reply::refuse(PrinterError::NotProvided);
        const Department &d = m.departments[n - 1];
        return Reply::ok()
            .with("RepartoNumber", n)
            .with("RepartoDescrizione", d.description)
            .with("RepartoLimite", d.limit)
            .with("RepartoIva", d.iva)
            .with("RepartoScontRiass", d.scontRiass)
            .with("RepartoGrpMerc", d.grpMerc);
    });
    t.insert("WriteReparto", [this, &m](ArgReader &a) {
        const int n = a.integer();
        Department d;
        d.description = cut(a.text());
        d.price1 = a.currency();
        d.price2 = a.currency();
        d.price3 = a.currency();
        a.integer(); // reserved
        d.iva = a.integer();
        d.limit = a.currency();
        d.scontRiass = a.integer();
        d.grpMerc = a.integer();
        a.text(); // reserved
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, int(m.departments.size())))
            return Reply::refuse(PrinterError::NotProvided);
        if (!within(d.iva, 0, PrinterMemory::IvaRows) || !within(d.scontRiass, 0, 10) || !within(d.grpMerc, 0, 10)
            || d.price1.scaled() < 0 || d.price2.scaled() < 0 || d.price3.scaled() < 0 || d.limit.scaled() < 0)
            return Reply::refuse(PrinterError::BadValue);
        return store(m.departments[n - 1], d);
    });
}

void ProgrammingCommands::installPromos(CommandTable &t)
{
    PrinterMemory &m = m_ctx.memory;
    t.insert("ReadPromo", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::PromoRows))
            return Reply::refuse(PrinterError::NotProvided);
        const PromoRow &p = m.promos[n - 1];
        return Reply::ok()
            .with("PromoNumber", n)
            .with("PromoDescrizione", p.description)
            .with("PromoTipo", p.type)
            .with("PromoBarcode", p.barcode)
            .with("PromoRichiamo", p.recall)
            .with("PromoValore", p.value);
    });
    t.insert("WritePromo", [this, &m](ArgReader &a) {
        const int n = a.integer();
        PromoRow p;
        p.type = a.longInt();
        p.recall = a.integer();
        p.barcode = a.text().left(DescriptionWidth);
        p.description = cut(a.text());
        p.value = a.currency();
        a.integer();
        a.integer();
        a.text();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, PrinterMemory::PromoRows))
            return Reply::refuse(PrinterError::NotProvided);
        if (p.type < 0 || p.recall < 0 || p.value.scaled() < 0)
            return Reply::refuse(PrinterError::BadValue);
        p.total = m.promos[n - 1].total;
        return store(m.promos[n - 1], p);
    });
}

void ProgrammingCommands::installFlags(CommandTable &t)
{
    PrinterMemory &m = m_ctx.memory;
    t.insert("ReadFlag", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, int(m.flags.size())))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("FlagValue", m.flags[n - 1]);
    });
    t.insert("WriteFlag", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const int v = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, int(m.flags.size())))
            return Reply::refuse(PrinterError::NotProvided);
        if (!within(v, 0, 1))
            return Reply::refuse(PrinterError::BadValue);
        return store(m.flags[n - 1], v);
    });
    t.insert("ReadParam", [&m](ArgReader &a) {
        const int n = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, int(m.params.size())))
            return Reply::refuse(PrinterError::NotProvided);
        return Reply::ok().with("ParamNumber", n).with("ParamValue", m.params[n - 1]);
    });
    t.insert("WriteParam", [this, &m](ArgReader &a) {
        const int n = a.integer();
        const int v = a.integer();
        if (!a.ok())
            return a.failure();
        if (!within(n, 1, int(m.params.size())))
            return Reply::refuse(PrinterError::NotProvided);
        if (!paramInRange(n, v))
            return Reply::refuse(PrinterError::BadValue);
        return store(m.params[n - 1], v);
    });
}
