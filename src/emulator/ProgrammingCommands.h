// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

class PrinterContext;

// The programming tables (VAT, departments, cards, tickets, cash, operators,
// PS2 keyboard, promotions) and the flags (section 14) and parameters
// (section 15). A row beyond a table is NON PREVISTO, a value outside its
// range VALORE ERRATO; descriptions longer than the printer keeps are cut.
class ProgrammingCommands
{
public:
    static constexpr int DescriptionWidth = 20;

    explicit ProgrammingCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

    // The accepted range of parameter n.
    static bool paramInRange(int n, int value);

private:
    void installTables(CommandTable &t);
    void installDepartments(CommandTable &t);
    void installPromos(CommandTable &t);
    void installFlags(CommandTable &t);

    // Stores a row, and marks the memory changed only when it differs.
    template <typename T>
    Reply store(T &row, const T &value);

    PrinterContext &m_ctx;
};
