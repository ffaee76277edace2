// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EmulatorConfig.h"
#include "PaperRoll.h"
#include "PrinterMemory.h"
#include "Receipt.h"
#include "Reply.h"

#include <QDateTime>
#include <functional>
#include <optional>

// The printer as its command groups share it: the memory that persists, the
// paper, and what lives only while it is switched on (receipt under way,
// raw channel, journal read, drawer, switches that the technician throws).
class PrinterContext
{
public:
    explicit PrinterContext(const EmulatorConfig &config);

    const EmulatorConfig config;
    PrinterMemory memory;
    PaperRoll roll;

    // Switches of the printer's condition.
    bool paperOut = false;
    bool offline = false;

    // Volatile state.
    std::optional<Receipt> receipt;
    struct RawJob
    {
        bool open = false;
        bool begun = false;
        qint64 announced = 0;
        QByteArray data;
    } raw;
    struct JournalRead
    {
        bool active = false;
        QStringList lines;
        qsizetype next = 0;
    } journalRead;
    bool escPosError = false;     // the last logo job was refused
    bool headerClosing = false;   // pseudo-line 98 came, 99 may follow
    bool keysLocked = false;
    QDateTime drawerOpenUntil;

    // The PC's clock; tests replace it.
    std::function<QDateTime()> systemClock = [] { return QDateTime::currentDateTime(); };
    QDateTime now() const { return systemClock().addMSecs(memory.clockOffsetMs); }

    // 1 when nothing fiscal happened since the last closure, above 1 after.
    int closureState() const;
    int lineWidth() const { return config.headerWidth(); }
    int flag(int n) const { return n >= 1 && n <= memory.flags.size() ? memory.flags[n - 1] : 0; }
    int param(int n) const { return n >= 1 && n <= memory.params.size() ? memory.params[n - 1] : 0; }
    bool learningMode() const { return flag(1) == 1; }
    bool drawerOpen() const { return drawerOpenUntil.isValid() && systemClock() < drawerOpenUntil; }
    QString printerStatus() const;

    // Refusals shared by the commands: the printer cannot print, the journal
    // cannot record, a receipt is open.
    std::optional<Reply> cannotPrint() const;
    std::optional<Reply> cannotRecord() const;
    std::optional<Reply> receiptOpen() const;

    // Printing. A document is printed whole and, when journaled, recorded.
    QStringList headerBlock() const;
    QStringList fiscalFooter(int number) const;
    void printLines(const QStringList &lines);
    void printDocument(const QString &kind, int number, const QStringList &lines, bool journaled = true);
    // Ends a document whose lines were printed already: the cut, the journal.
    void finishDocument(const QString &kind, int number, const QStringList &lines, bool journaled = true);

    // Something of the memory changed: the state file is due.
    void changed() { m_dirty = true; }
    bool takeDirty() { const bool d = m_dirty; m_dirty = false; return d; }

    // A power failure: the receipt under way is lost and printed as cancelled
    // when the printer comes back.
    void powerLost();
    void powerBack();

private:
    bool m_dirty = false;
    bool m_receiptLost = false;
};
