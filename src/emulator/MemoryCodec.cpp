// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryCodec.h"

#include <QJsonArray>

namespace {

QJsonValue money(Currency c) { return QJsonValue(qint64(c.scaled())); }
Currency money(const QJsonValue &v, Currency fallback = {})
{
    return v.isDouble() ? Currency::fromScaled(v.toInteger()) : fallback;
}
QString text(const QJsonValue &v, const QString &fallback = {}) { return v.isString() ? v.toString() : fallback; }
int integer(const QJsonValue &v, int fallback = 0) { return v.isDouble() ? int(v.toInteger()) : fallback; }
QJsonValue when(const QDateTime &d) { return d.isValid() ? QJsonValue(d.toString(Qt::ISODate)) : QJsonValue(); }
QDateTime when(const QJsonValue &v) { return v.isString() ? QDateTime::fromString(v.toString(), Qt::ISODate) : QDateTime(); }

QJsonObject bucketMap(const QMap<int, Bucket> &map)
{
    QJsonObject o;
    for (auto it = map.begin(); it != map.end(); ++it)
        o.insert(QString::number(it.key()),
                 QJsonArray{it->count, it->quantity, money(it->amount)});
    return o;
}

QMap<int, Bucket> bucketMap(const QJsonValue &v)
{
    QMap<int, Bucket> map;
    const QJsonObject o = v.toObject();
    for (auto it = o.begin(); it != o.end(); ++it) {
        const QJsonArray a = it.value().toArray();
        bool ok = false;
        const int key = it.key().toInt(&ok);
        if (!ok || a.size() != 3)
            continue;
        map.insert(key, Bucket{integer(a[0]), a[1].toDouble(), money(a[2])});
    }
    return map;
}

QJsonObject moneyMap(const QMap<int, Currency> &map)
{
    QJsonObject o;
    for (auto it = map.begin(); it != map.end(); ++it)
        o.insert(QString::number(it.key()), money(it.value()));
    return o;
}

QMap<int, Currency> moneyMap(const QJsonValue &v)
{
    QMap<int, Currency> map;
    const QJsonObject o = v.toObject();
    for (auto it = o.begin(); it != o.end(); ++it) {
        bool ok = false;
        const int key = it.key().toInt(&ok);
        if (ok && it.value().isDouble())
            map.insert(key, money(it.value()));
    }
    return map;
}

QJsonObject totals(const Totals &t)
{
    return QJsonObject{
        {QStringLiteral("receipts"), t.receipts},
        {QStringLiteral("nonFiscal"), t.nonFiscal},
        {QStringLiteral("cancelled"), t.cancelled},
        {QStringLiteral("sales"), money(t.sales)},
        {QStringLiteral("voids"), money(t.voids)},
        {QStringLiteral("discounts"), money(t.discounts)},
        {QStringLiteral("surcharges"), money(t.surcharges)},
        {QStringLiteral("change"), money(t.change)},
        {QStringLiteral("departments"), bucketMap(t.departments)},
        {QStringLiteral("vat"), bucketMap(t.vat)},
        {QStringLiteral("operators"), bucketMap(t.operators)},
        {QStringLiteral("hours"), bucketMap(t.hours)},
        {QStringLiteral("payments"), bucketMap(t.payments)},
    };
}

Totals totals(const QJsonValue &v)
{
    const QJsonObject o = v.toObject();
    Totals t;
    t.receipts = integer(o[QStringLiteral("receipts")]);
    t.nonFiscal = integer(o[QStringLiteral("nonFiscal")]);
    t.cancelled = integer(o[QStringLiteral("cancelled")]);
    t.sales = money(o[QStringLiteral("sales")]);
    t.voids = money(o[QStringLiteral("voids")]);
    t.discounts = money(o[QStringLiteral("discounts")]);
    t.surcharges = money(o[QStringLiteral("surcharges")]);
    t.change = money(o[QStringLiteral("change")]);
    t.departments = bucketMap(o[QStringLiteral("departments")]);
    t.vat = bucketMap(o[QStringLiteral("vat")]);
    t.operators = bucketMap(o[QStringLiteral("operators")]);
    t.hours = bucketMap(o[QStringLiteral("hours")]);
    t.payments = bucketMap(o[QStringLiteral("payments")]);
    return t;
}

// Reads each element of an array into the row of the same index, as far as
// both reach.
template <typename T, typename F>
void rows(const QJsonValue &v, QList<T> &list, F read)
{
    const QJsonArray a = v.toArray();
    for (qsizetype i = 0; i < a.size() && i < list.size(); ++i)
        read(a[i], list[i]);
}

QJsonArray strings(const QStringList &l) { return QJsonArray::fromStringList(l); }

} // namespace

QJsonObject MemoryCodec::entryJson(const JournalEntry &e)
{
    return QJsonObject{{QStringLiteral("when"), when(e.when)}, {QStringLiteral("kind"), e.kind},
                       {QStringLiteral("number"), e.number}, {QStringLiteral("lines"), strings(e.lines)}};
}

QJsonObject MemoryCodec::toJson(const PrinterMemory &m)
{
    QJsonObject o = fieldsJson(m);
    QJsonArray journal;
    for (const auto &e : m.journal.entries())
        journal.append(entryJson(e));
    QJsonObject j = o[QStringLiteral("journal")].toObject();
    j.insert(QStringLiteral("entries"), journal);
    o.insert(QStringLiteral("journal"), j);
    return o;
}

QJsonObject MemoryCodec::closureJson(const ClosureRecord &z)
{
    return QJsonObject{{QStringLiteral("number"), z.number}, {QStringLiteral("when"), when(z.when)},
                       {QStringLiteral("receipts"), z.receipts}, {QStringLiteral("total"), money(z.total)},
                       {QStringLiteral("vat"), moneyMap(z.vat)}};
}

QJsonObject MemoryCodec::fieldsJson(const PrinterMemory &m, bool withClosures)
{
    QJsonArray iva, deps, cards, tickets, cash, ops, ps2, promos, flags, params, header, logos, fm;
    for (float r : m.iva)
        iva.append(double(r));
    for (const auto &d : m.departments)
        deps.append(QJsonObject{{QStringLiteral("d"), d.description}, {QStringLiteral("p1"), money(d.price1)},
                                {QStringLiteral("p2"), money(d.price2)}, {QStringLiteral("p3"), money(d.price3)},
                                {QStringLiteral("iva"), d.iva}, {QStringLiteral("limit"), money(d.limit)},
                                {QStringLiteral("sr"), d.scontRiass}, {QStringLiteral("gm"), d.grpMerc}});
    for (const auto &c : m.cards)
        cards.append(c);
    for (const auto &t : m.tickets)
        tickets.append(QJsonObject{{QStringLiteral("d"), t.description}, {QStringLiteral("value"), money(t.value)}});
    for (const auto &c : m.cash)
        cash.append(QJsonObject{{QStringLiteral("d"), c.description}, {QStringLiteral("preset"), money(c.preset)}});
    for (const auto &o : m.operators)
        ops.append(QJsonObject{{QStringLiteral("d"), o.description}, {QStringLiteral("pwd"), o.password},
                               {QStringLiteral("perc"), double(o.percent)}});
    for (int f : m.ps2)
        ps2.append(f);
    for (const auto &p : m.promos)
        promos.append(QJsonObject{{QStringLiteral("d"), p.description}, {QStringLiteral("type"), p.type},
                                  {QStringLiteral("barcode"), p.barcode}, {QStringLiteral("recall"), p.recall},
                                  {QStringLiteral("value"), money(p.value)}, {QStringLiteral("total"), money(p.total)}});
    for (int f : m.flags)
        flags.append(f);
    for (int p : m.params)
        params.append(p);
    for (const auto &h : m.header)
        header.append(QJsonObject{{QStringLiteral("text"), h.text}, {QStringLiteral("style"), h.style}});
    for (const auto &l : m.logos)
        logos.append(QJsonObject{{QStringLiteral("data"), QString::fromLatin1(l.data.toBase64())},
                                 {QStringLiteral("loaded"), when(l.loaded)}});
    if (withClosures)
        for (const auto &z : m.fiscalMemory)
            fm.append(closureJson(z));
    QJsonObject fields{
        {QStringLiteral("format"), FormatVersion},
        {QStringLiteral("serial"), m.serial},
        {QStringLiteral("clockOffsetMs"), m.clockOffsetMs},
        {QStringLiteral("iva"), iva},
        {QStringLiteral("departments"), deps},
        {QStringLiteral("cards"), cards},
        {QStringLiteral("tickets"), tickets},
        {QStringLiteral("cash"), cash},
        {QStringLiteral("operators"), ops},
        {QStringLiteral("ps2"), ps2},
        {QStringLiteral("promos"), promos},
        {QStringLiteral("flags"), flags},
        {QStringLiteral("params"), params},
        {QStringLiteral("header"), header},
        {QStringLiteral("logos"), logos},
        {QStringLiteral("fiscalMemory"), fm},
        {QStringLiteral("journal"), QJsonObject{{QStringLiteral("number"), m.journal.number},
                                                {QStringLiteral("condition"), ElectronicJournal::conditionName(m.journal.forced)}}},
        {QStringLiteral("day"), totals(m.day)},
        {QStringLiteral("period"), totals(m.period)},
        {QStringLiteral("plu"), moneyMap(m.pluTotals)},
        {QStringLiteral("receiptNumber"), m.receiptNumber},
        {QStringLiteral("documentNumber"), m.documentNumber},
        {QStringLiteral("lastClosure"), when(m.lastClosure)},
    };
    if (!withClosures)
        fields.remove(QStringLiteral("fiscalMemory"));
    return fields;
}

void MemoryCodec::fromJson(const QJsonObject &o, PrinterMemory &m)
{
    m.serial = text(o[QStringLiteral("serial")], m.serial);
    if (o[QStringLiteral("clockOffsetMs")].isDouble())
        m.clockOffsetMs = o[QStringLiteral("clockOffsetMs")].toInteger();
    rows(o[QStringLiteral("iva")], m.iva, [](const QJsonValue &v, float &r) {
        if (v.isDouble())
            r = float(v.toDouble());
    });
    rows(o[QStringLiteral("departments")], m.departments, [](const QJsonValue &v, Department &d) {
        const QJsonObject r = v.toObject();
        d.description = text(r[QStringLiteral("d")], d.description);
        d.price1 = money(r[QStringLiteral("p1")], d.price1);
        d.price2 = money(r[QStringLiteral("p2")], d.price2);
        d.price3 = money(r[QStringLiteral("p3")], d.price3);
        d.iva = integer(r[QStringLiteral("iva")], d.iva);
        d.limit = money(r[QStringLiteral("limit")], d.limit);
        d.scontRiass = integer(r[QStringLiteral("sr")], d.scontRiass);
        d.grpMerc = integer(r[QStringLiteral("gm")], d.grpMerc);
    });
    rows(o[QStringLiteral("cards")], m.cards, [](const QJsonValue &v, QString &c) { c = text(v, c); });
    rows(o[QStringLiteral("tickets")], m.tickets, [](const QJsonValue &v, TicketRow &t) {
        const QJsonObject r = v.toObject();
        t.description = text(r[QStringLiteral("d")], t.description);
        t.value = money(r[QStringLiteral("value")], t.value);
    });
    rows(o[QStringLiteral("cash")], m.cash, [](const QJsonValue &v, CashRow &c) {
        const QJsonObject r = v.toObject();
        c.description = text(r[QStringLiteral("d")], c.description);
        c.preset = money(r[QStringLiteral("preset")], c.preset);
    });
    rows(o[QStringLiteral("operators")], m.operators, [](const QJsonValue &v, OperatorRow &op) {
        const QJsonObject r = v.toObject();
        op.description = text(r[QStringLiteral("d")], op.description);
        op.password = integer(r[QStringLiteral("pwd")], op.password);
        if (r[QStringLiteral("perc")].isDouble())
            op.percent = float(r[QStringLiteral("perc")].toDouble());
    });
    rows(o[QStringLiteral("ps2")], m.ps2, [](const QJsonValue &v, int &f) { f = integer(v, f); });
    rows(o[QStringLiteral("promos")], m.promos, [](const QJsonValue &v, PromoRow &p) {
        const QJsonObject r = v.toObject();
        p.description = text(r[QStringLiteral("d")], p.description);
        p.type = integer(r[QStringLiteral("type")], p.type);
        p.barcode = text(r[QStringLiteral("barcode")], p.barcode);
        p.recall = integer(r[QStringLiteral("recall")], p.recall);
        p.value = money(r[QStringLiteral("value")], p.value);
        p.total = money(r[QStringLiteral("total")], p.total);
    });
    rows(o[QStringLiteral("flags")], m.flags, [](const QJsonValue &v, int &f) { f = integer(v, f); });
    rows(o[QStringLiteral("params")], m.params, [](const QJsonValue &v, int &p) { p = integer(v, p); });
    rows(o[QStringLiteral("header")], m.header, [](const QJsonValue &v, HeaderLine &h) {
        const QJsonObject r = v.toObject();
        h.text = text(r[QStringLiteral("text")], h.text);
        h.style = integer(r[QStringLiteral("style")], h.style);
    });
    if (o[QStringLiteral("logos")].isArray()) {
        m.logos.clear();
        for (const QJsonValue &v : o[QStringLiteral("logos")].toArray()) {
            const QJsonObject r = v.toObject();
            m.logos.append({QByteArray::fromBase64(text(r[QStringLiteral("data")]).toLatin1()),
                            when(r[QStringLiteral("loaded")])});
        }
    }
    if (o[QStringLiteral("fiscalMemory")].isArray()) {
        m.fiscalMemory.clear();
        for (const QJsonValue &v : o[QStringLiteral("fiscalMemory")].toArray()) {
            const QJsonObject r = v.toObject();
            m.fiscalMemory.append({integer(r[QStringLiteral("number")]), when(r[QStringLiteral("when")]),
                                   integer(r[QStringLiteral("receipts")]), money(r[QStringLiteral("total")]),
                                   moneyMap(r[QStringLiteral("vat")])});
        }
    }
    const QJsonObject j = o[QStringLiteral("journal")].toObject();
    m.journal.number = integer(j[QStringLiteral("number")], m.journal.number);
    m.journal.forced = ElectronicJournal::conditionFromName(text(j[QStringLiteral("condition")]))
                           .value_or(ElectronicJournal::Condition::Ok);
    if (j[QStringLiteral("entries")].isArray()) {
        QList<JournalEntry> entries;
        for (const QJsonValue &v : j[QStringLiteral("entries")].toArray()) {
            const QJsonObject r = v.toObject();
            QStringList lines;
            for (const QJsonValue &l : r[QStringLiteral("lines")].toArray())
                lines.append(l.toString());
            entries.append({when(r[QStringLiteral("when")]), text(r[QStringLiteral("kind")]),
                            integer(r[QStringLiteral("number")]), lines});
        }
        m.journal.setEntries(entries);
    }
    if (o[QStringLiteral("day")].isObject())
        m.day = totals(o[QStringLiteral("day")]);
    if (o[QStringLiteral("period")].isObject())
        m.period = totals(o[QStringLiteral("period")]);
    if (o[QStringLiteral("plu")].isObject())
        m.pluTotals = moneyMap(o[QStringLiteral("plu")]);
    m.receiptNumber = integer(o[QStringLiteral("receiptNumber")], m.receiptNumber);
    m.documentNumber = integer(o[QStringLiteral("documentNumber")], m.documentNumber);
    if (o[QStringLiteral("lastClosure")].isString())
        m.lastClosure = when(o[QStringLiteral("lastClosure")]);
}
