// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultSwitches.h"

#include <QStringList>

void FaultSwitches::set(Wire fault, int count)
{
    m_count[int(fault)] = count < 0 ? Always : count;
}

bool FaultSwitches::consume(Wire fault)
{
    int &n = m_count[int(fault)];
    if (n == 0)
        return false;
    if (n > 0)
        --n;
    return true;
}

void FaultSwitches::clear()
{
    for (int &n : m_count)
        n = 0;
    slowMs = 0;
}

QString FaultSwitches::name(Wire fault)
{
    switch (fault) {
    case Wire::Nak:
        return QStringLiteral("nak");
    case Wire::NoAck:
        return QStringLiteral("noack");
    case Wire::AckOnly:
        return QStringLiteral("ackonly");
    case Wire::CutAnswer:
        return QStringLiteral("cut");
    case Wire::BadChecksum:
        return QStringLiteral("badsum");
    case Wire::Stale:
        return QStringLiteral("stale");
    }
    return {};
}

std::optional<FaultSwitches::Wire> FaultSwitches::fromName(const QString &name)
{
    for (int i = 0; i < Count; ++i)
        if (FaultSwitches::name(Wire(i)) == name)
            return Wire(i);
    return std::nullopt;
}

QString FaultSwitches::describe() const
{
    QStringList on;
    for (int i = 0; i < Count; ++i) {
        if (m_count[i] == Always)
            on << name(Wire(i));
        else if (m_count[i] > 0)
            on << QStringLiteral("%1 (next %2)").arg(name(Wire(i))).arg(m_count[i]);
    }
    if (slowMs > 0)
        on << QStringLiteral("slow %1 ms").arg(slowMs);
    return on.isEmpty() ? QStringLiteral("none") : on.join(QStringLiteral(", "));
}
