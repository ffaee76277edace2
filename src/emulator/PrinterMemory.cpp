// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrinterMemory.h"

template <typename T>
static void resizeTo(QList<T> &list, int n, const T &blank = T())
{
    while (list.size() > n)
        list.removeLast();
    while (list.size() < n)
        list.append(blank);
}

static int defaultParam(int n)
{
    switch (n) {
    case 7:
        return 12; // print intensity
    case 8:
        return 8;  // display contrast
    case 11:
        return 1;  // till number
    default:
        return 0;
    }
}

void PrinterMemory::fit(const EmulatorConfig &config)
{
    resizeTo(iva, IvaRows, 0.0f);
    resizeTo(departments, config.departments);
    resizeTo(cards, CardRows);
    resizeTo(tickets, TicketRows);
    resizeTo(cash, CashRows);
    resizeTo(operators, OperatorRows);
    resizeTo(ps2, Ps2Keys, 0);
    resizeTo(promos, PromoRows);
    resizeTo(header, HeaderLines);
    while (flags.size() > config.flags)
        flags.removeLast();
    while (flags.size() < config.flags) {
        const int n = int(flags.size()) + 1;
        flags.append(n == 12 || n == 26 || n == 27 ? 1 : 0);
    }
    while (params.size() > config.params)
        params.removeLast();
    while (params.size() < config.params)
        params.append(defaultParam(int(params.size()) + 1));
    journal.capacity = qint64(config.journalKb) * 1024;
}

PrinterMemory PrinterMemory::fresh(const EmulatorConfig &config)
{
    PrinterMemory m;
    m.serial = config.effectiveSerial();
    m.iva = {22.0f, 10.0f, 5.0f, 4.0f};
    m.fit(config);

    struct Dep { const char *name; int iva; qint64 limit; };
    const Dep deps[] = {
        {"ALIMENTARI", 4, 0}, {"FRUTTA", 2, 0}, {"PANE", 4, 0}, {"BEVANDE", 1, 0},
        {"CAFFÈ", 2, 1000000}, {"GIORNALI", 1, 0}, {"VARIE", 1, 2000000}, {"SERVIZI", 1, 0},
    };
    for (int i = 0; i < int(std::size(deps)) && i < m.departments.size(); ++i) {
        m.departments[i].description = QString::fromUtf8(deps[i].name);
        m.departments[i].iva = deps[i].iva;
        m.departments[i].limit = Currency::fromScaled(deps[i].limit);
    }
    const char *cards[] = {"BANCOMAT", "VISA", "MASTERCARD", "AMERICAN EXPRESS"};
    for (int i = 0; i < int(std::size(cards)); ++i)
        m.cards[i] = QString::fromLatin1(cards[i]);
    m.tickets[0] = {QStringLiteral("BUONO PASTO"), Currency::fromScaled(52900)};
    m.tickets[1] = {QStringLiteral("TICKET RESTAURANT"), Currency::fromScaled(70000)};
    m.cash[0] = {QStringLiteral("CONTANTI"), Currency()};
    m.cash[1] = {QStringLiteral("FONDO CASSA"), Currency::fromUnits(100)};
    m.cash[2] = {QStringLiteral("VERSAMENTO"), Currency::fromUnits(50)};
    for (int i = 0; i < OperatorRows; ++i)
        m.operators[i].description = QStringLiteral("OPERATORE %1").arg(i + 1);
    m.promos[0] = {QStringLiteral("OFFERTA CAFFÈ"), 1, QStringLiteral("8001234567890"), 0, Currency::fromScaled(5000), {}};
    m.header[0] = {QStringLiteral("KELVO DEMO S.R.L."), 4};
    m.header[1] = {QStringLiteral("VIA DEI TIGLI 12"), 1};
    m.header[2] = {QStringLiteral("00100 BORGO NUOVO"), 1};
    m.header[3] = {QStringLiteral("P.IVA 01234567890"), 1};
    const int w = config.headerWidth();
    for (auto &h : m.header)
        h.text = h.text.left(w);
    return m;
}
