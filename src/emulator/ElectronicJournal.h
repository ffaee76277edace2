// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QList>
#include <QStringList>
#include <optional>

// One printed document as the journal keeps it.
struct JournalEntry
{
    QDateTime when;
    QString kind;    // SCONTRINO, NON FISCALE, ANNULLATO, LETTURA X, CHIUSURA Z, ...
    int number = 0;  // fiscal receipt number of the day; 0 for the other documents
    QStringList lines;
};

// The electronic journal (DGFE): the memory card that records every printed
// document, with its number, its fill level and the condition of the card.
class ElectronicJournal
{
public:
    // The condition of the card. Near full and full also follow from the fill
    // level; the others describe a card that was put in (fault switches).
    enum class Condition { Ok, NearFull, Full, ToFormat, OtherMemory };

    int number = 1;                 // DgfeNumber
    qint64 capacity = 1024 * 1024;  // bytes of text
    Condition forced = Condition::Ok;

    const QList<JournalEntry> &entries() const { return m_entries; }
    void setEntries(const QList<JournalEntry> &entries);
    void record(const JournalEntry &entry);
    void format();                  // a new, empty memory with the next number

    Condition condition() const;
    int percent() const;            // DgfePercent
    int dgfeState() const;          // DgfeState: 0 OK, 1 near full, 2 to format, 3 another printer's, 4 full
    int statusDigit() const;        // 2nd digit of PrinterStatus
    bool writable() const;          // documents can be recorded
    bool readable() const;          // this printer's data can be read

    // The lines of the documents of a selection, in order.
    QStringList linesByDate(QDate from, QDate to) const;
    QStringList linesByNumber(QDate day, int first, int last) const;

    static QString conditionName(Condition c);
    static std::optional<Condition> conditionFromName(const QString &name);

private:
    QList<JournalEntry> m_entries;
    qint64 m_used = 0;
};
