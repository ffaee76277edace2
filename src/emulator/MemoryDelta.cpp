// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryDelta.h"

#include "MemoryCodec.h"

#include <QJsonArray>

namespace {

QJsonObject lastClosure(const PrinterMemory &memory)
{
    return memory.fiscalMemory.isEmpty() ? QJsonObject() : MemoryCodec::closureJson(memory.fiscalMemory.last());
}

// A list that only grows: the items from `from` on go into the record under
// `itemsKey`, with `from` under `fromKey`, when anything was added or the
// list starts again (from < known).
template <typename List, typename Encode>
void addTail(QJsonObject &record, const List &list, qsizetype from, qsizetype known, Encode encode,
             const QString &fromKey, const QString &itemsKey)
{
    if (from == known && list.size() == known)
        return;
    QJsonArray added;
    for (qsizetype i = from; i < list.size(); ++i)
        added.append(encode(list[i]));
    record.insert(fromKey, from);
    record.insert(itemsKey, added);
}

} // namespace

void MemoryDelta::reset(const PrinterMemory &memory)
{
    m_fields = MemoryCodec::fieldsJson(memory, false);
    m_entries = memory.journal.entries().size();
    m_journalNumber = memory.journal.number;
    m_closures = memory.fiscalMemory.size();
    m_lastClosure = lastClosure(memory);
}

QJsonObject MemoryDelta::take(const PrinterMemory &memory)
{
    QJsonObject record;
    const QJsonObject fields = MemoryCodec::fieldsJson(memory, false);
    QJsonObject set;
    for (auto it = fields.begin(); it != fields.end(); ++it)
        if (m_fields.value(it.key()) != it.value())
            set.insert(it.key(), it.value());
    if (!set.isEmpty())
        record.insert(QStringLiteral("set"), set);

    // A formatted journal starts again from its first document.
    const auto &entries = memory.journal.entries();
    const qsizetype from = memory.journal.number == m_journalNumber && entries.size() >= m_entries ? m_entries : 0;
    addTail(record, entries, from, m_entries, MemoryCodec::entryJson, QStringLiteral("from"),
            QStringLiteral("entries"));
    // Closures are only ever added; should the memory have been replaced
    // (fewer closures, or the newest one differs), it is written whole.
    const auto &closures = memory.fiscalMemory;
    qsizetype closuresFrom = m_closures;
    if (closures.size() < m_closures
        || (m_closures > 0 && MemoryCodec::closureJson(closures[m_closures - 1]) != m_lastClosure))
        closuresFrom = 0;
    addTail(record, closures, closuresFrom, m_closures, MemoryCodec::closureJson, QStringLiteral("closuresFrom"),
            QStringLiteral("closures"));
    m_fields = fields;
    m_entries = entries.size();
    m_journalNumber = memory.journal.number;
    m_closures = closures.size();
    m_lastClosure = lastClosure(memory);
    return record;
}
