// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

class PrinterContext;

// The six receipt header lines and their styles. They change only with no
// fiscal activity since the last closure. The programming is closed by the
// pseudo-line 98 and then 99, both with empty text; 99 prints the new header.
class HeaderCommands
{
public:
    explicit HeaderCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

private:
    Reply writeLine(ArgReader &a);
    Reply writeStyle(ArgReader &a);
    Reply readLine(ArgReader &a);
    Reply readStyle(ArgReader &a);
    Reply closeProgramming(int pseudoLine, const QString &text);
    std::optional<Reply> cannotChange() const;

    PrinterContext &m_ctx;
};
