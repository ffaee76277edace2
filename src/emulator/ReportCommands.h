// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

class PrinterContext;
struct Totals;

// The daily closure (Z) into the fiscal memory, the eight X reports, the
// print of the fiscal memory, and the resets of the PLU and promotion totals.
class ReportCommands
{
public:
    explicit ReportCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

    enum class Report { Financial, Operator, Hourly, Department };

private:
    Reply closure(ArgReader &a);
    Reply xReport(ArgReader &a, Report kind, bool period);
    Reply fiscalMemory(ArgReader &a);
    Reply resetPlu(ArgReader &a);
    Reply resetPromo(ArgReader &a);

    // period: the totals since the printer began, not the day's.
    QStringList financialLines(const Totals &t, bool period = false) const;
    QStringList vatLines(const Totals &t) const;
    QStringList reportFooter() const;

    PrinterContext &m_ctx;
};
