// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

#include <QDate>

class PrinterContext;

// The electronic journal: its selections read line by line (the first call
// opens the selection and brings its first line, every other call the next
// one; the last line comes with InfoCode 3102, and so does an empty
// selection), printed on paper, and the formatting of a new memory.
class JournalCommands
{
public:
    static constexpr int EndOfData = 3102;

    explicit JournalCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

private:
    Reply readByDate(ArgReader &a);
    Reply readByNumber(ArgReader &a);
    Reply nextLine();
    Reply printByDate(ArgReader &a);
    Reply printByNumber(ArgReader &a);
    Reply printSelection(const QString &title, const QStringList &lines);
    Reply format(ArgReader &a);

    static QDate dateOf(int day, int month, int year);

    PrinterContext &m_ctx;
};
