// SPDX-License-Identifier: GPL-3.0-or-later
#include "SaleCommands.h"

#include "PrinterContext.h"
#include "TextLayout.h"

namespace {

const Currency MaxAmount = Currency::fromScaled(9999999999LL * 100); // 99.999.999,99

QString paymentName(int type)
{
    switch (type) {
    case Receipt::Cheque:
        return QStringLiteral("ASSEGNO");
    case Receipt::Card:
        return QStringLiteral("CARTA DI CREDITO");
    case Receipt::Ticket:
        return QStringLiteral("TICKET");
    default:
        return QStringLiteral("CONTANTE");
    }
}

} // namespace

void SaleCommands::install(CommandTable &t)
{
    t.insert("SellReparto", [this](ArgReader &a) { return sell(a); });
    t.insert("StornoReparto", [this](ArgReader &a) { return storno(a); });
    t.insert("PrintSubtotal", [this](ArgReader &a) { return subtotal(a); });
    t.insert("AbbuonoReparto", [this](ArgReader &a) { return adjustItem(a, -1, false); });
    t.insert("AumentoReparto", [this](ArgReader &a) { return adjustItem(a, +1, false); });
    t.insert("ScontoPercReparto", [this](ArgReader &a) { return adjustItem(a, -1, true); });
    t.insert("AumentoPercReparto", [this](ArgReader &a) { return adjustItem(a, +1, true); });
    t.insert("AbbuonoTotale", [this](ArgReader &a) { return adjustTotal(a, -1, false); });
    t.insert("AumentoTotale", [this](ArgReader &a) { return adjustTotal(a, +1, false); });
    t.insert("ScontoPercTotale", [this](ArgReader &a) { return adjustTotal(a, -1, true); });
    t.insert("AumentoPercTotale", [this](ArgReader &a) { return adjustTotal(a, +1, true); });
    t.insert("PayReceipt", [this](ArgReader &a) { return payReceipt(a); });
    t.insert("PayContanteDesc", [this](ArgReader &a) { return payCash(a); });
}

std::optional<Reply> SaleCommands::checkOperator(int op) const
{
    if (op < 1 || op > PrinterMemory::OperatorRows)
        return Reply::refuse(PrinterError::NoOperator);
    return std::nullopt;
}

std::optional<Reply> SaleCommands::checkDepartment(int dept) const
{
    if (dept < 1 || dept > m_ctx.memory.departments.size())
        return Reply::refuse(PrinterError::NotProvided);
    const int iva = m_ctx.memory.departments[dept - 1].iva;
    if (iva < 1 || iva > PrinterMemory::IvaRows)
        return Reply::refuse(PrinterError::NotProgrammed);
    return std::nullopt;
}

// What a sale and a void of an item have to pass before anything else.
std::optional<Reply> SaleCommands::checkItem(int op, int dept, double qty, Currency price) const
{
    if (auto r = checkOperator(op))
        return r;
    if (auto r = checkDepartment(dept))
        return r;
    if (qty <= 0 || qty > 9999 || price.scaled() <= 0)
        return Reply::refuse(PrinterError::BadValue);
    return std::nullopt;
}

std::optional<Reply> SaleCommands::itemsClosed(int op) const
{
    const auto &r = m_ctx.receipt;
    if (!r)
        return Reply::refuse(PrinterError::Sequence);
    if (r->phase == Receipt::Phase::Paying)
        return Reply::refuse(PrinterError::ClosePayment);
    if (r->phase == Receipt::Phase::Adjusted || r->op != op)
        return Reply::refuse(PrinterError::Sequence);
    return std::nullopt;
}

void SaleCommands::openReceipt(int op)
{
    const bool fiscal = !m_ctx.learningMode();
    m_ctx.receipt.emplace(fiscal, op, m_ctx.now());
    const int w = m_ctx.lineWidth();
    QStringList lines = m_ctx.headerBlock();
    if (!fiscal)
        lines << TextLayout::centred(QStringLiteral("MODALITA' APPRENDIMENTO"), w)
              << TextLayout::centred(QStringLiteral("DOCUMENTO NON FISCALE"), w);
    lines << TextLayout::row(QString(), QStringLiteral("EURO"), w);
    m_ctx.printLines(lines);
}

Reply SaleCommands::sell(ArgReader &a)
{
    const int op = a.integer();
    const double qty = a.single();
    const QString desc = a.text();
    const Currency price = a.currency();
    const int dept = a.integer();
    a.longInt();
    if (!a.ok())
        return a.failure();
    if (auto r = checkItem(op, dept, qty, price))
        return *r;
    const Department &d = m_ctx.memory.departments[dept - 1];
    if (d.limit.scaled() > 0 && price > d.limit)
        return Reply::refuse(PrinterError::OverLimit);
    if (m_ctx.receipt) {
        if (auto r = itemsClosed(op))
            return *r;
    }
    const Currency amount = lineAmount(qty, price);
    const Currency before = m_ctx.receipt ? m_ctx.receipt->total() : Currency();
    if (amount > MaxAmount || before + amount > MaxAmount)
        return Reply::refuse(PrinterError::OverValue);
    if (auto r = m_ctx.receipt ? m_ctx.cannotPrint() : m_ctx.cannotRecord())
        return *r;
    if (!m_ctx.receipt)
        openReceipt(op);

    const int w = m_ctx.lineWidth();
    const QString text = desc.trimmed().isEmpty() ? d.description : desc;
    QStringList lines;
    if (qty != 1.0)
        lines << QStringLiteral("  %1 x %2").arg(TextLayout::quantity(qty), TextLayout::money(price));
    lines << TextLayout::row(text, TextLayout::money(amount), w);
    m_ctx.printLines(lines);
    m_ctx.receipt->sell(dept, qty, amount);
    if (m_ctx.receipt->fiscal)
        countPluAndPromo(desc, amount);
    return Reply::ok();
}

void SaleCommands::countPluAndPromo(const QString &description, Currency amount)
{
    const QString code = description.trimmed();
    bool isNumber = false;
    const int plu = code.toInt(&isNumber);
    if (isNumber && plu >= 1 && plu <= PrinterMemory::PluCount) {
        m_ctx.memory.pluTotals[plu] = m_ctx.memory.pluTotals.value(plu) + amount;
        m_ctx.changed();
    }
    if (code.isEmpty())
        return;
    for (PromoRow &p : m_ctx.memory.promos) {
        if (p.barcode.trimmed() == code) {
            p.total = p.total + amount;
            m_ctx.changed();
        }
    }
}

Reply SaleCommands::storno(ArgReader &a)
{
    const int op = a.integer();
    const QString desc = a.text();
    const double qty = a.single();
    const Currency price = a.currency();
    const int dept = a.integer();
    a.integer();
    if (!a.ok())
        return a.failure();
    if (auto r = checkItem(op, dept, qty, price))
        return *r;
    if (auto r = itemsClosed(op))
        return *r;
    const Currency amount = lineAmount(qty, price);
    if (amount > m_ctx.receipt->departmentNet(dept))
        return Reply::refuse(PrinterError::NoData);
    if (auto r = m_ctx.cannotPrint())
        return *r;
    const int w = m_ctx.lineWidth();
    const QString text = desc.trimmed().isEmpty() ? m_ctx.memory.departments[dept - 1].description : desc;
    QStringList lines{QStringLiteral("STORNO")};
    if (qty != 1.0)
        lines << QStringLiteral("  %1 x %2").arg(TextLayout::quantity(qty), TextLayout::money(price));
    lines << TextLayout::row(text, TextLayout::money(-amount), w);
    m_ctx.printLines(lines);
    m_ctx.receipt->storno(dept, qty, amount);
    return Reply::ok();
}

Reply SaleCommands::subtotal(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    if (!m_ctx.receipt)
        return Reply::refuse(PrinterError::Sequence);
    if (auto r = m_ctx.cannotPrint())
        return *r;
    m_ctx.printLines({TextLayout::row(QStringLiteral("SUBTOTALE"), TextLayout::money(m_ctx.receipt->due()),
                                      m_ctx.lineWidth())});
    m_ctx.receipt->subtotalPrinted = true;
    return Reply::ok();
}

Reply SaleCommands::adjustItem(ArgReader &a, int sign, bool percent)
{
    const int op = a.integer();
    const double value = percent ? double(a.single()) : 0.0;
    const Currency amount = percent ? Currency() : a.currency();
    if (!a.ok())
        return a.failure();
    if (auto r = itemsClosed(op))
        return *r;
    if (!m_ctx.receipt->hasAdjustableItem())
        return Reply::refuse(PrinterError::Sequence);
    const Currency item = m_ctx.receipt->lastItemAmount();
    if (percent ? (value <= 0 || value > 100) : amount.scaled() <= 0)
        return Reply::refuse(PrinterError::BadValue);
    const Currency delta = percent ? percentOf(item, value) : amount;
    if ((sign < 0 && delta > item) || (sign > 0 && m_ctx.receipt->total() + delta > MaxAmount))
        return Reply::refuse(PrinterError::OverValue);
    if (auto r = m_ctx.cannotPrint())
        return *r;
    QString label = sign < 0 ? QStringLiteral("SCONTO") : QStringLiteral("MAGGIORAZIONE");
    if (percent)
        label += QStringLiteral(" %1%").arg(TextLayout::percent(value));
    m_ctx.printLines({TextLayout::row(label, TextLayout::money(sign < 0 ? -delta : delta), m_ctx.lineWidth())});
    m_ctx.receipt->adjustItem(sign < 0 ? -delta : delta);
    return Reply::ok();
}

Reply SaleCommands::adjustTotal(ArgReader &a, int sign, bool percent)
{
    const int op = a.integer();
    const double value = percent ? double(a.single()) : 0.0;
    const Currency amount = percent ? Currency() : a.currency();
    if (!a.ok())
        return a.failure();
    const auto &r = m_ctx.receipt;
    if (!r || r->op != op)
        return Reply::refuse(PrinterError::Sequence);
    if (r->phase == Receipt::Phase::Paying)
        return Reply::refuse(PrinterError::ClosePayment);
    if (r->total().scaled() <= 0)
        return Reply::refuse(PrinterError::Sequence);
    if (percent ? (value <= 0 || value > 100) : amount.scaled() <= 0)
        return Reply::refuse(PrinterError::BadValue);
    const Currency delta = percent ? percentOf(r->total(), value) : amount;
    if ((sign < 0 && delta > r->total()) || (sign > 0 && r->total() + delta > MaxAmount))
        return Reply::refuse(PrinterError::OverValue);
    if (auto e = m_ctx.cannotPrint())
        return *e;
    const int w = m_ctx.lineWidth();
    QString label = sign < 0 ? QStringLiteral("SCONTO SUBTOTALE") : QStringLiteral("MAGG. SUBTOTALE");
    if (percent)
        label += QStringLiteral(" %1%").arg(TextLayout::percent(value));
    m_ctx.printLines({TextLayout::row(QStringLiteral("SUBTOTALE"), TextLayout::money(r->total()), w),
                      TextLayout::row(label, TextLayout::money(sign < 0 ? -delta : delta), w)});
    m_ctx.receipt->adjustTotal(sign < 0 ? -delta : delta);
    return Reply::ok();
}

Reply SaleCommands::payReceipt(ArgReader &a)
{
    const int op = a.integer();
    const QString desc = a.text();
    const Currency amount = a.currency();
    const int type = a.longInt();
    const int tickets = a.integer();
    a.integer();
    if (!a.ok())
        return a.failure();
    if (auto r = checkOperator(op))
        return *r;
    if (type < Receipt::Cash || type > Receipt::Ticket || amount.scaled() < 0 || tickets < 0)
        return Reply::refuse(PrinterError::BadValue);
    if (!m_ctx.receipt || m_ctx.receipt->op != op)
        return Reply::refuse(PrinterError::Sequence);
    const Currency due = m_ctx.receipt->due();
    Currency paid = amount.scaled() == 0 ? due : amount;
    QStringList detail;
    if (type == Receipt::Ticket && amount.scaled() != 0) {
        const int count = qMax(tickets, 1);
        paid = Currency::fromScaled(amount.scaled() * count);
        if (count > 1)
            detail << QStringLiteral("  %1 x %2").arg(count).arg(TextLayout::money(amount));
    }
    if ((type == Receipt::Cheque || type == Receipt::Card) && paid > due)
        return Reply::refuse(PrinterError::OverValue);
    const QString label = desc.trimmed().isEmpty() ? paymentName(type) : desc;
    return pay(type, paid, label, detail);
}

Reply SaleCommands::payCash(ArgReader &a)
{
    const int op = a.integer();
    const int number = a.integer();
    const Currency amount = a.currency();
    if (!a.ok())
        return a.failure();
    if (auto r = checkOperator(op))
        return *r;
    if (number < 1 || number > PrinterMemory::CashRows)
        return Reply::refuse(PrinterError::NotProvided);
    const QString desc = m_ctx.memory.cash[number - 1].description;
    if (desc.trimmed().isEmpty())
        return Reply::refuse(PrinterError::NotProgrammed);
    if (amount.scaled() < 0)
        return Reply::refuse(PrinterError::BadValue);
    if (!m_ctx.receipt || m_ctx.receipt->op != op)
        return Reply::refuse(PrinterError::Sequence);
    return pay(Receipt::Cash, amount.scaled() == 0 ? m_ctx.receipt->due() : amount, desc, {});
}

Reply SaleCommands::pay(int type, Currency amount, const QString &label, const QStringList &detail)
{
    Receipt &r = *m_ctx.receipt;
    if (r.total().scaled() < 0)
        return Reply::refuse(PrinterError::OverValue);
    if (r.phase != Receipt::Phase::Paying && m_ctx.flag(13) == 1 && !r.subtotalPrinted)
        return Reply::refuse(PrinterError::Sequence);
    if (amount > MaxAmount)
        return Reply::refuse(PrinterError::OverValue);
    if (auto e = m_ctx.cannotPrint())
        return *e;
    const int w = m_ctx.lineWidth();
    QStringList lines;
    if (r.phase != Receipt::Phase::Paying)
        lines << TextLayout::rule(w) << TextLayout::row(QStringLiteral("TOTALE EURO"), TextLayout::money(r.total()), w);
    lines << detail << TextLayout::row(label, TextLayout::money(amount), w);
    m_ctx.printLines(lines);
    r.pay(type, amount);
    const Currency residue = r.due();
    if (r.settled()) {
        if (type == Receipt::Cash && m_ctx.flag(26) == 1)
            m_ctx.drawerOpenUntil = m_ctx.systemClock().addSecs(5);
        closeReceipt();
    }
    return Reply::ok().with("PaymentResidue", residue);
}

void SaleCommands::closeReceipt()
{
    Receipt &r = *m_ctx.receipt;
    PrinterMemory &m = m_ctx.memory;
    const int w = m_ctx.lineWidth();
    QStringList lines;
    if (r.change().scaled() > 0)
        lines << TextLayout::row(QStringLiteral("RESTO"), TextLayout::money(r.change()), w);
    int number = 0;
    QString kind;
    if (r.fiscal) {
        number = ++m.receiptNumber;
        kind = QStringLiteral("SCONTRINO");
        lines << QString() << m_ctx.fiscalFooter(number);
    } else {
        kind = QStringLiteral("NON FISCALE");
        lines << QString() << TextLayout::centred(QStringLiteral("DOCUMENTO NON FISCALE"), w)
              << TextLayout::row(TextLayout::stamp(m_ctx.now()),
                                 QStringLiteral("DOC. N. %1").arg(++m.documentNumber, 4, 10, QLatin1Char('0')), w);
    }
    m_ctx.printLines(lines);
    const Totals t = r.contribution(
        [&m](int dept) { return dept >= 1 && dept <= m.departments.size() ? m.departments[dept - 1].iva : 0; },
        m_ctx.now().time().hour());
    if (r.fiscal) {
        m.day.add(t);
        m.period.add(t);
    } else {
        ++m.day.nonFiscal;
        ++m.period.nonFiscal;
    }
    const QStringList all = r.lines;
    m_ctx.receipt.reset();
    m_ctx.finishDocument(kind, number, all);
    m_ctx.changed();
}
