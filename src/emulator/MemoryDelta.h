// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PrinterMemory.h"

#include <QJsonObject>

// What changed in the printer's memory since the last record: the top-level
// members that differ (each whole: a day's totals, a table), and the journal
// documents and fiscal memory closures added since. A command thus writes
// what it changed, a few kB for a receipt, and compares no more, however
// long the journal and the fiscal memory have grown.
class MemoryDelta
{
public:
    // The memory as it now stands on disk.
    void reset(const PrinterMemory &memory);
    // The record for StateFile::append, empty when nothing changed; the
    // memory then counts as written (reset() again if the write failed).
    QJsonObject take(const PrinterMemory &memory);

private:
    QJsonObject m_fields;
    qsizetype m_entries = 0;
    int m_journalNumber = 0;
    qsizetype m_closures = 0;
    QJsonObject m_lastClosure; // the newest closure as written, to see it was not changed in place
};
