// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

class PrinterContext;
class Receipt;

// Receipts: sales by department, voids, discounts and surcharges on the
// item and on the subtotal, payments of every kind. The first sale opens a
// receipt (non-fiscal in learning mode, flag 1); the payment that leaves
// nothing due closes it, records it in the journal and adds it to the totals.
class SaleCommands
{
public:
    explicit SaleCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

private:
    Reply sell(ArgReader &a);
    Reply storno(ArgReader &a);
    Reply subtotal(ArgReader &a);
    // sign -1 discount, +1 surcharge; percent: the value is a percentage.
    Reply adjustItem(ArgReader &a, int sign, bool percent);
    Reply adjustTotal(ArgReader &a, int sign, bool percent);
    Reply payReceipt(ArgReader &a);
    Reply payCash(ArgReader &a);
    Reply pay(int type, Currency amount, const QString &label, const QStringList &detail);

    std::optional<Reply> checkOperator(int op) const;
    std::optional<Reply> checkDepartment(int dept) const;
    std::optional<Reply> checkItem(int op, int dept, double qty, Currency price) const;
    // The open receipt when items may still be added or changed, else the refusal.
    std::optional<Reply> itemsClosed(int op) const;
    void openReceipt(int op);
    void closeReceipt();
    void countPluAndPromo(const QString &description, Currency amount);

    PrinterContext &m_ctx;
};
