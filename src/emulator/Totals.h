// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Currency.h"

#include <QMap>

// Counters of sales, kept for the day (reset by the daily closure) and for
// the period (never reset). A closed receipt adds its own Totals to both.
struct Bucket
{
    int count = 0;
    double quantity = 0;
    Currency amount;
};

struct Totals
{
    int receipts = 0;   // fiscal receipts closed
    int nonFiscal = 0;  // receipts closed in learning mode
    int cancelled = 0;  // receipts lost to a power failure
    Currency sales, voids, discounts, surcharges, change;
    QMap<int, Bucket> departments; // by department number
    QMap<int, Bucket> vat;         // by VAT row 1..4 (0: none)
    QMap<int, Bucket> operators;   // by operator 1..12
    QMap<int, Bucket> hours;       // by hour of the day 0..23
    QMap<int, Bucket> payments;    // by payment type 0 cash, 1 cheque, 2 card, 3 ticket

    Currency net() const { return sales - voids - discounts + surcharges; }
    bool isEmpty() const { return receipts == 0 && nonFiscal == 0 && cancelled == 0 && departments.isEmpty(); }
    void add(const Totals &other);
};

inline void addTo(QMap<int, Bucket> &map, int key, const Bucket &b)
{
    Bucket &t = map[key];
    t.count += b.count;
    t.quantity += b.quantity;
    t.amount = t.amount + b.amount;
}
