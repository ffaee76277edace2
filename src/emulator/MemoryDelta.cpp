// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryDelta.h"

#include "MemoryCodec.h"

#include <QJsonArray>

namespace {

QJsonObject lastClosure(const PrinterMemory &memory)
{
    return memory.fiscalMemory.isEmpty() ? QJsonObject() : MemoryCodec::closureJson(memory.fiscalMemory.last());
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
    if (from != m_entries || entries.size() != m_entries) {
        QJsonArray added;
        for (qsizetype i = from; i < entries.size(); ++i)
            added.append(MemoryCodec::entryJson(entries[i]));
        record.insert(QStringLiteral("from"), from);
        record.insert(QStringLiteral("entries"), added);
    }
    // Closures are only ever added; should the memory have been replaced
    // (fewer closures, or the newest one differs), it is written whole.
    const auto &closures = memory.fiscalMemory;
    qsizetype closuresFrom = m_closures;
    if (closures.size() < m_closures
        || (m_closures > 0 && MemoryCodec::closureJson(closures[m_closures - 1]) != m_lastClosure))
        closuresFrom = 0;
    if (closuresFrom != m_closures || closures.size() != m_closures) {
        QJsonArray added;
        for (qsizetype i = closuresFrom; i < closures.size(); ++i)
            added.append(MemoryCodec::closureJson(closures[i]));
        record.insert(QStringLiteral("closuresFrom"), closuresFrom);
        record.insert(QStringLiteral("closures"), added);
    }
    m_fields = fields;
    m_entries = entries.size();
    m_journalNumber = memory.journal.number;
    m_closures = closures.size();
    m_lastClosure = lastClosure(memory);
    return record;
}
