// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Totals.h"

#include <QDateTime>
#include <QStringList>
#include <functional>

// The receipt under way: what was sold, voided, adjusted and paid, and the
// lines printed for it so far. Pure bookkeeping; the sale commands decide
// what is allowed and what is printed.
class Receipt
{
public:
    // Items: sales and item adjustments go on. Adjusted: the subtotal was
    // discounted or surcharged, only payments may follow. Paying: a part was
    // paid.
    enum class Phase { Items, Adjusted, Paying };
    enum PaymentType { Cash = 0, Cheque = 1, Card = 2, Ticket = 3 };

    Receipt(bool fiscal, int op, const QDateTime &opened) : fiscal(fiscal), op(op), opened(opened) {}

    const bool fiscal;
    const int op;
    const QDateTime opened;
    Phase phase = Phase::Items;
    QStringList lines;
    bool subtotalPrinted = false;

    Currency total() const { return m_total; }
    Currency paid() const { return m_paid; }
    Currency change() const { return m_change; }
    Currency due() const { return m_total > m_paid ? m_total - m_paid : Currency(); }
    bool settled() const { return m_paid >= m_total && (m_paid.scaled() > 0 || m_total.scaled() == 0); }

    void sell(int department, double quantity, Currency amount);
    Currency departmentNet(int department) const { return m_departments.value(department).amount; }
    void storno(int department, double quantity, Currency amount);
    // The last line, when it is a sale that an item adjustment may change.
    bool hasAdjustableItem() const { return m_lastDepartment != 0; }
    Currency lastItemAmount() const { return m_lastAmount; }
    void adjustItem(Currency delta);   // positive: surcharge, negative: discount
    void adjustTotal(Currency delta);
    // Records a payment; cash pays beyond what is due and gives change.
    void pay(int type, Currency amount);

    // What this receipt adds to the day's and the period's totals.
    Totals contribution(const std::function<int(int)> &vatOfDepartment, int hour) const;

private:
    Currency m_total, m_paid, m_change;
    Currency m_sales, m_voids, m_discounts, m_surcharges, m_totalAdjustment;
    QMap<int, Bucket> m_departments;
    QMap<int, Bucket> m_payments;
    int m_lastDepartment = 0;
    Currency m_lastAmount;
};

// qty x price rounded to the cent, halves away from zero.
Currency lineAmount(double quantity, Currency price);
// A percentage of an amount, rounded to the cent.
Currency percentOf(Currency amount, double percent);
