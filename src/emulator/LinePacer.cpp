// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinePacer.h"

void LinePacer::push(const QByteArray &bytes, qint64 now)
{
    if (bytes.isEmpty())
        return;
    // A byte starts when the line is free: now, or when the one before it
    // is through.
    if (m_queue.isEmpty())
        m_firstDone = now + m_charNs;
    m_queue += bytes;
}

QByteArray LinePacer::take(qint64 now)
{
    if (m_queue.isEmpty() || now < m_firstDone)
        return {};
    qsizetype n = m_queue.size();
    if (m_charNs > 0)
        n = qMin<qsizetype>(n, (now - m_firstDone) / m_charNs + 1);
    const QByteArray out = m_queue.first(n);
    m_queue.remove(0, n);
    m_firstDone += n * m_charNs;
    return out;
}

qint64 LinePacer::nextWake(qint64 now) const
{
    if (m_queue.isEmpty())
        return -1;
    qsizetype batch = Batch;
    if (m_charNs > 0)
        batch = qMax<qsizetype>(batch, BatchNs / m_charNs);
    batch = qMin<qsizetype>(m_queue.size(), batch);
    return qMax(now, m_firstDone + (batch - 1) * m_charNs);
}
