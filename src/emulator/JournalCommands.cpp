// SPDX-License-Identifier: GPL-3.0-or-later
#include "JournalCommands.h"

#include "PrinterContext.h"
#include "TextLayout.h"

void JournalCommands::install(CommandTable &t)
{
    t.insert("ReadDgfeByDate", [this](ArgReader &a) { return readByDate(a); });
    t.insert("ReadDgfeByNumber", [this](ArgReader &a) { return readByNumber(a); });
    t.insert("PrintDgfeByDate", [this](ArgReader &a) { return printByDate(a); });
    t.insert("PrintDgfeByNumber", [this](ArgReader &a) { return printByNumber(a); });
    t.insert("FormatDgfe", [this](ArgReader &a) { return format(a); });
}

QDate JournalCommands::dateOf(int day, int month, int year)
{
    if (year >= 0 && year < 100)
        year += 2000;
    return QDate(year, month, day);
}

Reply JournalCommands::readByDate(ArgReader &a)
{
    a.integer();
    const int fd = a.integer(), fm = a.integer(), fy = a.integer();
    const int td = a.integer(), tm = a.integer(), ty = a.integer();
    const bool first = a.boolean();
    if (!a.ok())
        return a.failure();
    if (first) {
        const QDate from = dateOf(fd, fm, fy), to = dateOf(td, tm, ty);
        if (!from.isValid() || !to.isValid() || from > to)
            return Reply::refuse(PrinterError::DateWrong);
        m_ctx.journalRead = {true, m_ctx.memory.journal.linesByDate(from, to), 0};
    }
    return nextLine();
}

Reply JournalCommands::readByNumber(ArgReader &a)
{
    a.integer();
    const int d = a.integer(), m = a.integer(), y = a.integer();
    const int firstReceipt = a.integer(), lastReceipt = a.integer();
    const bool first = a.boolean();
    if (!a.ok())
        return a.failure();
    if (first) {
        const QDate day = dateOf(d, m, y);
        if (!day.isValid())
            return Reply::refuse(PrinterError::DateWrong);
        if (firstReceipt < 1 || lastReceipt < firstReceipt)
            return Reply::refuse(PrinterError::BadValue);
        m_ctx.journalRead = {true, m_ctx.memory.journal.linesByNumber(day, firstReceipt, lastReceipt), 0};
    }
    return nextLine();
}

Reply JournalCommands::nextLine()
{
    auto &r = m_ctx.journalRead;
    if (!r.active)
        return Reply::refuse(PrinterError::Sequence);
    if (r.next >= r.lines.size())
        return Reply::ok().with("DgfeLine", QString()).with("InfoCode", EndOfData);
    const QString line = r.lines[r.next++];
    return Reply::ok().with("DgfeLine", line).with("InfoCode", r.next >= r.lines.size() ? EndOfData : 0);
}

Reply JournalCommands::printByDate(ArgReader &a)
{
    a.integer();
    const int fd = a.integer(), fm = a.integer(), fy = a.integer();
    const int td = a.integer(), tm = a.integer(), ty = a.integer();
    if (!a.ok())
        return a.failure();
    const QDate from = dateOf(fd, fm, fy), to = dateOf(td, tm, ty);
    if (!from.isValid() || !to.isValid() || from > to)
        return Reply::refuse(PrinterError::DateWrong);
    return printSelection(QStringLiteral("DAL %1 AL %2").arg(TextLayout::date(from), TextLayout::date(to)),
                          m_ctx.memory.journal.linesByDate(from, to));
}

Reply JournalCommands::printByNumber(ArgReader &a)
{
    a.integer();
    const int d = a.integer(), m = a.integer(), y = a.integer();
    const int firstReceipt = a.integer(), lastReceipt = a.integer();
    if (!a.ok())
        return a.failure();
    const QDate day = dateOf(d, m, y);
    if (!day.isValid())
        return Reply::refuse(PrinterError::DateWrong);
    if (firstReceipt < 1 || lastReceipt < firstReceipt)
        return Reply::refuse(PrinterError::BadValue);
    return printSelection(QStringLiteral("%1 SC. %2-%3").arg(TextLayout::date(day)).arg(firstReceipt).arg(lastReceipt),
                          m_ctx.memory.journal.linesByNumber(day, firstReceipt, lastReceipt));
}

Reply JournalCommands::printSelection(const QString &title, const QStringList &lines)
{
    if (auto r = m_ctx.receiptOpen())
        return *r;
    if (auto r = m_ctx.cannotPrint())
        return *r;
    if (lines.isEmpty())
        return Reply::refuse(PrinterError::NoData);
    const int w = m_ctx.lineWidth();
    QStringList out{TextLayout::centred(QStringLiteral("STAMPA DGFE N. %1").arg(m_ctx.memory.journal.number), w),
                    TextLayout::centred(title, w), TextLayout::rule(w)};
    out << lines << TextLayout::rule(w) << TextLayout::centred(QStringLiteral("FINE STAMPA DGFE"), w);
    m_ctx.printDocument(QStringLiteral("STAMPA DGFE"), 0, out, false);
    return Reply::ok();
}

Reply JournalCommands::format(ArgReader &a)
{
    a.integer();
    if (!a.ok())
        return a.failure();
    if (auto r = m_ctx.receiptOpen())
        return *r;
    ElectronicJournal &j = m_ctx.memory.journal;
    const auto condition = j.condition();
    if (condition == ElectronicJournal::Condition::OtherMemory)
        return Reply::refuse(PrinterError::NotPossible);
    // A memory in service is replaced only with the day closed.
    if (condition != ElectronicJournal::Condition::ToFormat && m_ctx.closureState() > 1)
        return Reply::refuse(PrinterError::NotNow);
    if (auto r = m_ctx.cannotPrint())
        return *r;
    j.format();
    m_ctx.journalRead = {};
    const int w = m_ctx.lineWidth();
    QStringList lines = m_ctx.headerBlock();
    lines << QString() << TextLayout::centred(QStringLiteral("INIZIALIZZAZIONE DGFE"), w)
          << TextLayout::row(QStringLiteral("DGFE N."), QString::number(j.number), w)
          << TextLayout::row(QStringLiteral("MATRICOLA"), m_ctx.memory.serial, w)
          << TextLayout::row(QStringLiteral("CAPACITA' KB"), QString::number(j.capacity / 1024), w)
          << QString() << TextLayout::stamp(m_ctx.now());
    m_ctx.printDocument(QStringLiteral("INIZIALIZZAZIONE"), 0, lines);
    m_ctx.changed();
    return Reply::ok();
}
