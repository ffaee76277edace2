// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryDelta.h"

#include "MemoryCodec.h"

#include <QJsonArray>

void MemoryDelta::reset(const PrinterMemory &memory)
{
    m_fields = MemoryCodec::fieldsJson(memory);
    m_entries = memory.journal.entries().size();
    m_journalNumber = memory.journal.number;
}

QJsonObject MemoryDelta::take(const PrinterMemory &memory)
{
    QJsonObject record;
    const QJsonObject fields = MemoryCodec::fieldsJson(memory);
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
    m_fields = fields;
    m_entries = entries.size();
    m_journalNumber = memory.journal.number;
    return record;
}
