// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

class PrinterContext;

// Clock, closure state, identity and condition, drawer, paper feed, keys.
class DeviceCommands
{
public:
    explicit DeviceCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

private:
    Reply readDateTime();
    Reply setDateTime(ArgReader &a);
    Reply readPrinterInfo(ArgReader &a);
    Reply readMatricola(ArgReader &a);
    Reply readDgfeStatus(ArgReader &a);
    Reply feedPaper(ArgReader &a);

    PrinterContext &m_ctx;
};
