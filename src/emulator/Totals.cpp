// SPDX-License-Identifier: GPL-3.0-or-later
#include "Totals.h"

void Totals::add(const Totals &o)
{
    receipts += o.receipts;
    nonFiscal += o.nonFiscal;
    cancelled += o.cancelled;
    sales = sales + o.sales;
    voids = voids + o.voids;
    discounts = discounts + o.discounts;
    surcharges = surcharges + o.surcharges;
    change = change + o.change;
    for (auto it = o.departments.begin(); it != o.departments.end(); ++it)
        addTo(departments, it.key(), it.value());
    for (auto it = o.vat.begin(); it != o.vat.end(); ++it)
        addTo(vat, it.key(), it.value());
    for (auto it = o.operators.begin(); it != o.operators.end(); ++it)
        addTo(operators, it.key(), it.value());
    for (auto it = o.hours.begin(); it != o.hours.end(); ++it)
        addTo(hours, it.key(), it.value());
    for (auto it = o.payments.begin(); it != o.payments.end(); ++it)
        addTo(payments, it.key(), it.value());
}
