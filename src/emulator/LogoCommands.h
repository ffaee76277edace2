// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandTable.h"

class PrinterContext;

// The logo memory. Newer firmware takes jobs through the raw channel
// "FPEXTENDEDGRAPHIC": a logo load (opening text, the logo's bytes, closing
// text) or a memory clear (its text and four GS ( E commands). A KX90 with
// firmware 1.x has no raw channel and loads logos with LoadLogoFile. A job
// that cannot be used leaves the ESC/POS error in the 4th status digit until
// the next good job or a power cycle.
class LogoCommands
{
public:
    static constexpr qint64 MemoryBytes = 512 * 1024;
    static const QByteArray ChannelName;
    static const QByteArray LoadOpening;
    static const QByteArray LoadClosing;
    static const QByteArray ClearOpening;
    static const QByteArray ClearCommands;

    explicit LogoCommands(PrinterContext &ctx) : m_ctx(ctx) {}
    void install(CommandTable &table);

private:
    Reply open(ArgReader &a);
    Reply begin(ArgReader &a);
    Reply send(ArgReader &a);
    Reply close(ArgReader &a);
    Reply loadFile(ArgReader &a);
    void runJob(const QByteArray &job);
    void store(const QByteArray &image);
    void fail(const QString &why);

    PrinterContext &m_ctx;
};
