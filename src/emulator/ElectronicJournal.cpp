// SPDX-License-Identifier: GPL-3.0-or-later
#include "ElectronicJournal.h"

static qint64 sizeOf(const JournalEntry &e)
{
    qint64 n = 0;
    for (const QString &l : e.lines)
        n += l.size() + 1;
    return n;
}

void ElectronicJournal::setEntries(const QList<JournalEntry> &entries)
{
    m_entries = entries;
    m_used = 0;
    for (const auto &e : m_entries)
        m_used += sizeOf(e);
}

void ElectronicJournal::record(const JournalEntry &entry)
{
    m_entries.append(entry);
    m_used += sizeOf(entry);
}

void ElectronicJournal::format()
{
    m_entries.clear();
    m_used = 0;
    ++number;
    forced = Condition::Ok;
}

ElectronicJournal::Condition ElectronicJournal::condition() const
{
    if (forced != Condition::Ok)
        return forced;
    if (m_used >= capacity)
        return Condition::Full;
    if (m_used * 10 >= capacity * 9)
        return Condition::NearFull;
    return Condition::Ok;
}

int ElectronicJournal::percent() const
{
    switch (forced) {
    case Condition::Full:
        return 100;
    case Condition::NearFull:
        return qMax(90, int(qMin<qint64>(99, m_used * 100 / capacity)));
    case Condition::ToFormat:
    case Condition::OtherMemory:
        return 0;
    case Condition::Ok:
        break;
    }
    return int(qMin<qint64>(100, m_used * 100 / capacity));
}

// The protocol numbers the card's condition twice: once as DgfeState and
// once in the status digit. An Ok card is 0 in both.
namespace {
struct ConditionCodes
{
    int nearFull, toFormat, otherMemory, full;
};
int codeOf(ElectronicJournal::Condition c, ConditionCodes codes)
{
    using Condition = ElectronicJournal::Condition;
    switch (c) {
    case Condition::NearFull:
        return codes.nearFull;
    case Condition::ToFormat:
        return codes.toFormat;
    case Condition::OtherMemory:
        return codes.otherMemory;
    case Condition::Full:
        return codes.full;
    case Condition::Ok:
        break;
    }
    return 0;
}
}

int ElectronicJournal::dgfeState() const
{
    return codeOf(condition(), {1, 2, 3, 4});
}

int ElectronicJournal::statusDigit() const
{
    return codeOf(condition(), {1, 2, 4, 5});
}

bool ElectronicJournal::writable() const
{
    const Condition c = condition();
    return c == Condition::Ok || c == Condition::NearFull;
}

bool ElectronicJournal::readable() const
{
    const Condition c = condition();
    return c != Condition::ToFormat && c != Condition::OtherMemory;
}

QStringList ElectronicJournal::linesByDate(QDate from, QDate to) const
{
    QStringList out;
    if (!readable())
        return out;
    for (const auto &e : m_entries) {
        const QDate d = e.when.date();
        if (d >= from && d <= to)
            out += e.lines;
    }
    return out;
}

QStringList ElectronicJournal::linesByNumber(QDate day, int first, int last) const
{
    QStringList out;
    if (!readable())
        return out;
    for (const auto &e : m_entries) {
        if (e.number > 0 && e.when.date() == day && e.number >= first && e.number <= last)
            out += e.lines;
    }
    return out;
}

QString ElectronicJournal::conditionName(Condition c)
{
    switch (c) {
    case Condition::NearFull:
        return QStringLiteral("nearfull");
    case Condition::Full:
        return QStringLiteral("full");
    case Condition::ToFormat:
        return QStringLiteral("toformat");
    case Condition::OtherMemory:
        return QStringLiteral("othermf");
    case Condition::Ok:
        break;
    }
    return QStringLiteral("ok");
}

std::optional<ElectronicJournal::Condition> ElectronicJournal::conditionFromName(const QString &name)
{
    for (Condition c : {Condition::Ok, Condition::NearFull, Condition::Full, Condition::ToFormat, Condition::OtherMemory})
        if (conditionName(c) == name.trimmed().toLower())
            return c;
    return std::nullopt;
}
