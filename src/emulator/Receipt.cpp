// SPDX-License-Identifier: GPL-3.0-or-later
#include "Receipt.h"

#include <cmath>

Currency lineAmount(double quantity, Currency price)
{
    const double cents = std::round(double(price.scaled()) * quantity / 100.0);
    return Currency::fromScaled(int64_t(cents) * 100);
}

Currency percentOf(Currency amount, double percent)
{
    return lineAmount(percent / 100.0, amount);
}

void Receipt::sell(int department, double quantity, Currency amount)
{
    addTo(m_departments, department, Bucket{1, quantity, amount});
    m_sales = m_sales + amount;
    m_total = m_total + amount;
    m_lastDepartment = department;
    m_lastAmount = amount;
    subtotalPrinted = false;
}

void Receipt::storno(int department, double quantity, Currency amount)
{
    addTo(m_departments, department, Bucket{0, -quantity, -amount});
    m_voids = m_voids + amount;
    m_total = m_total - amount;
    m_lastDepartment = 0;
    subtotalPrinted = false;
}

void Receipt::adjustItem(Currency delta)
{
    addTo(m_departments, m_lastDepartment, Bucket{0, 0, delta});
    if (delta.scaled() < 0)
        m_discounts = m_discounts - delta;
    else
        m_surcharges = m_surcharges + delta;
    m_total = m_total + delta;
    m_lastDepartment = 0;
}

void Receipt::adjustTotal(Currency delta)
{
    if (delta.scaled() < 0)
        m_discounts = m_discounts - delta;
    else
        m_surcharges = m_surcharges + delta;
    m_totalAdjustment = m_totalAdjustment + delta;
    m_total = m_total + delta;
    m_lastDepartment = 0;
    phase = Phase::Adjusted;
}

void Receipt::pay(int type, Currency amount)
{
    const Currency before = due();
    m_paid = m_paid + amount;
    Currency counted = amount;
    if (amount > before) {
        // Only cash gives change; an excess of tickets is kept by the shop.
        if (type == Cash)
            m_change = m_change + (amount - before);
        counted = type == Cash ? before : amount;
    }
    addTo(m_payments, type, Bucket{1, 0, counted});
    phase = Phase::Paying;
}

Totals Receipt::contribution(const std::function<int(int)> &vatOfDepartment, int hour) const
{
    Totals t;
    (fiscal ? t.receipts : t.nonFiscal) = 1;
    t.sales = m_sales;
    t.voids = m_voids;
    t.discounts = m_discounts;
    t.surcharges = m_surcharges;
    t.change = m_change;
    t.departments = m_departments;
    t.payments = m_payments;
    t.operators.insert(op, Bucket{1, 0, m_total});
    t.hours.insert(hour, Bucket{1, 0, m_total});

    // The subtotal's adjustment is shared among the VAT rows by their weight.
    QMap<int, Bucket> vat;
    Currency net;
    for (auto it = m_departments.begin(); it != m_departments.end(); ++it) {
        addTo(vat, vatOfDepartment(it.key()), Bucket{0, it->quantity, it->amount});
        net = net + it->amount;
    }
    Currency left = m_totalAdjustment;
    int lastKey = vat.isEmpty() ? 0 : vat.lastKey();
    for (auto it = vat.begin(); it != vat.end(); ++it) {
        it->count = 1;
        if (it.key() == lastKey || net.scaled() == 0)
            continue;
        const Currency share = lineAmount(double(it->amount.scaled()) / double(net.scaled()), m_totalAdjustment);
        it->amount = it->amount + share;
        left = left - share;
    }
    if (left.scaled() != 0)
        addTo(vat, lastKey, Bucket{0, 0, left});
    t.vat = vat;
    return t;
}
